#pragma once

#include <QString>
#include <QStringView>

#include <initializer_list>
#include <vector>

namespace ado {
class Recordset;
}

/// Composes the text of a grid's row of one record after the other; the fields are looked up once.
class Radtekst
{
public:
    enum class Form {
        Tekst,
        Heltall,
        EnDesimal,
        Belop,     ///< with blanks between thousands
        TettBelop, ///< without
        Dato,
    };
    struct Felt
    {
        QStringView navn;
        Form form = Form::Tekst;
    };

    /// `rs` outlives this object; `felter` stand in the order of the grid's columns.
    Radtekst(const ado::Recordset &rs, std::initializer_list<Felt> felter);

    /// The current record's cells, parted by tabs; a Null is an empty one. Valid until the next
    /// call. Not trapped: what the record set raises.
    [[nodiscard]] QStringView rad();

private:
    struct Celle
    {
        int felt;
        Form form;
    };
    void legg(const Celle &celle);

    const ado::Recordset &m_rs;
    std::vector<Celle> m_celler;
    QString m_rad;
};
