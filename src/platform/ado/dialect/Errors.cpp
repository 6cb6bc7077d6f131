#include "platform/ado/dialect/Errors.h"

#include "platform/ado/dialect/ErrorNumbers.h"
#include "runtime/RunTimeError.h"

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

constexpr int kShown = 40; // characters of a token in a message

QString quoted(QStringView text)
{
    if (text.size() <= kShown)
        return u"«%1»"_s.arg(text);
    qsizetype shown = kShown;
    if (text[shown - 1].isHighSurrogate())
        --shown;
    return u"«%1…»"_s.arg(text.first(shown));
}

// Users count characters from 1.
QString place(const Token &at)
{
    return u"ved tegn %1"_s.arg(at.position + 1);
}

QString forColumn(QStringView column)
{
    return column.isEmpty() ? QString() : u" for feltet %1"_s.arg(quoted(column));
}

} // namespace

void raiseSyntax(const Token &at)
{
    if (at.kind == TokenKind::End)
        raiseSyntax(at, u"setningen er ikke ferdig"_s);
    if (at.kind == TokenKind::Error && at.text.startsWith(u'\''))
        raiseSyntax(at, u"teksten mangler avsluttende apostrof"_s);
    if (at.kind == TokenKind::Error && at.text.startsWith(u'#'))
        raiseSyntax(at, u"datoen mangler avsluttende «#»"_s);
    raiseSyntax(at, quoted(at.text));
}

void raiseSyntax(const Token &at, const QString &why)
{
    throw RunTimeError(errors::kSyntax,
                       u"Syntaksfeil i setningen "_s + place(at) + u": "_s + why + u'.');
}

void raiseNoSuchTable(QStringView table, const Token &at)
{
    throw RunTimeError(errors::kNoSuchTable,
                       u"Finner ikke tabellen "_s + quoted(table) + u' ' + place(at) + u'.');
}

void raiseNoSuchColumn(QStringView column, const Token &at)
{
    throw RunTimeError(errors::kNoSuchColumn,
                       u"Finner ikke feltet "_s + quoted(column) + u' ' + place(at) + u'.');
}

void raiseAmbiguousColumn(QStringView column, const Token &at)
{
    throw RunTimeError(errors::kNoSuchColumn, u"Feltet "_s + quoted(column) + u' ' + place(at) +
                                                  u" finnes i flere av tabellene."_s);
}

void raiseTableExists(QStringView table)
{
    throw RunTimeError(errors::kTableExists,
                       u"Tabellen "_s + quoted(table) + u" finnes fra før."_s);
}

void raiseColumnExists(QStringView column)
{
    throw RunTimeError(errors::kColumnExists,
                       u"Feltet "_s + quoted(column) + u" finnes fra før."_s);
}

void raiseTypeMismatch(const Token &at)
{
    throw RunTimeError(errors::kTypeMismatch, u"Datatypene passer ikke sammen "_s + place(at) +
                                                  u": "_s + quoted(at.text) + u'.');
}

void raiseDoesNotFit(const Token &at, QStringView column)
{
    throw RunTimeError(errors::kTypeMismatch, u"Verdien "_s + quoted(at.text) + u' ' + place(at) +
                                                  u" har feil datatype"_s + forColumn(column) +
                                                  u'.');
}

void raiseOutOfRange(const Token &at, QStringView column)
{
    throw RunTimeError(errors::kOutOfRange, u"Verdien "_s + quoted(at.text) + u' ' + place(at) +
                                                u" er for stor"_s + forColumn(column) + u'.');
}

} // namespace ado::dialect
