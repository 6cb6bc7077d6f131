#pragma once

#include "platform/ado/AdoTypes.h"
#include "platform/ado/dialect/Translator.h"
#include "platform/ado/sqlite/SqliteWriter.h"
#include "runtime/RunTimeError.h"

#include <gtest/gtest.h>

#include <ostream>

/// What the tests of the dialect layer share.
namespace ado::dialect::test {

using namespace Qt::StringLiterals;

/// A few tables with a column of every type.
inline Catalog catalog()
{
    Catalog catalog;
    catalog.add({u"Ordre"_s,
                 {{u"ID"_s, DataType::Integer, 0, true, true},
                  {u"KlientNr"_s, DataType::SmallInt, 0, false, false},
                  {u"OrdreNr"_s, DataType::Integer, 0, false, false},
                  {u"OrdreStatus"_s, DataType::VarWChar, 10, false, false},
                  {u"Betalt"_s, DataType::Boolean, 0, false, false},
                  {u"OrdreDato"_s, DataType::Date, 0, false, false},
                  {u"RabattPst"_s, DataType::Single, 0, false, false},
                  {u"Vekt"_s, DataType::Double, 0, false, false},
                  {u"SumBrutto"_s, DataType::Currency, 0, false, false},
                  {u"Bilde"_s, DataType::LongVarBinary, 0, false, false}}});
    catalog.add({u"OrdreLinjer"_s,
                 {{u"ID"_s, DataType::Integer, 0, true, true},
                  {u"OrdreID"_s, DataType::Integer, 0, false, false},
                  {u"ProduktNr"_s, DataType::VarWChar, 20, false, false},
                  {u"MvaPst"_s, DataType::Single, 0, false, false},
                  {u"Sum"_s, DataType::Currency, 0, false, false}}});
    catalog.add({u"Poststed"_s,
                 {{u"PostNr"_s, DataType::VarWChar, 10, false, true},
                  {u"PostSted"_s, DataType::VarWChar, 40, false, false}}});
    return catalog;
}

inline Translation translated(const QString &statement)
{
    return translate(lex(statement), catalog(), SqliteWriter());
}

inline QString sqlOf(const QString &statement)
{
    return QString::fromUtf8(translated(statement).sql);
}

/// The part of a query's translation behind its first WHERE.
inline QString whereOf(const QString &condition)
{
    const QString sql = sqlOf(u"SELECT ID FROM Ordre WHERE "_s + condition);
    return sql.section(u" WHERE "_s, 1).section(u" ORDER BY "_s, 0, 0);
}

/// The values that a statement's literals are turned into.
inline std::vector<Value> valuesOf(const QString &statement)
{
    const Lexed lexed = lex(statement);
    return parameterValues(translate(lexed, catalog(), SqliteWriter()), lexed);
}

struct Failure
{
    int number = 0; ///< 0 for none
    QString text;
};

/// The error that translating a statement or converting its literals raises.
inline Failure failureOf(const QString &statement)
{
    try {
        valuesOf(statement);
    } catch (const RunTimeError &error) {
        return {error.number(), error.description()};
    }
    return {};
}

} // namespace ado::dialect::test

/// How a failed comparison of texts is shown.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
