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
            m_rad += tekst(celle);
        m_rad += u'\t';
    }
    return QStringView(m_rad).chopped(1);
}

QString Radtekst::tekst(const Celle &celle) const
{
    switch (celle.form) {
    case Form::Tekst:
        break;
    case Form::Heltall:
        return Format(m_rs.integer(celle.felt), u"#0");
    case Form::EnDesimal:
        return Format(m_rs.single(celle.felt), u"#0.0");
    case Form::Belop:
        return Format(m_rs.currency(celle.felt), u"# ##0.00");
    case Form::TettBelop:
        return Format(m_rs.currency(celle.felt), u"#0.00");
    case Form::Dato:
        return Format(m_rs.value(celle.felt).toDate(), u"dd.mm.yyyy");
    }
    return m_rs.text(celle.felt);
}
