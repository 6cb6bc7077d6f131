#include "presentation/spread/Radtekst.h"

#include "platform/ado/Recordset.h"
#include "runtime/Format.h"

Radtekst::Radtekst(const ado::Recordset &rs, std::initializer_list<Felt> felter) : m_rs(rs)
{
    m_celler.reserve(felter.size());
    for (const Felt &felt : felter)
        m_celler.push_back({rs.fieldIndex(felt.navn), felt.form});
}

QStringView Radtekst::rad()
{
    m_rad.resize(0); // keeps its memory
    for (const Celle &celle : m_celler) {
        if (!m_rs.isNull(celle.felt))
            legg(celle);
        m_rad += u'\t';
    }
    return QStringView(m_rad).chopped(1);
}

void Radtekst::legg(const Celle &celle)
{
    switch (celle.form) {
    case Form::Tekst:
        return m_rs.appendText(m_rad, celle.felt);
    case Form::Heltall:
        return appendFormat(m_rad, qint64{m_rs.integer(celle.felt)}, u"#0");
    case Form::EnDesimal:
        m_rad += Format(m_rs.single(celle.felt), u"#0.0");
        return;
    case Form::Belop:
        return appendFormat(m_rad, m_rs.currency(celle.felt), u"# ##0.00");
    case Form::TettBelop:
        return appendFormat(m_rad, m_rs.currency(celle.felt), u"#0.00");
    case Form::Dato:
        return appendFormat(m_rad, m_rs.date(celle.felt), u"dd.mm.yyyy");
    }
}
