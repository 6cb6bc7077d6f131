// Any bytes or words as a formula and as a selection: refused with an error that has a text, or
// worked out; and a selection that is taken leaves one statement, with its condition in the place
// of the condition.

#include "platform/ado/dialect/Parser.h"
#include "platform/report/Evaluator.h"
#include "platform/report/FormulaChecker.h"
#include "platform/report/Functions.h"
#include "platform/report/Query.h"
#include "platform/report/Selection.h"
#include "runtime/Moment.h"

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace report;

namespace {

// clang-format off
const char *const kWords[] = {
    "{Ordre.Nr}", "{Ordre.Sum}", "{Ordre.Dato}", "{Ordre.Status}", "{Ordre.Betalt}", "{Ordre.Logo}",
    "{Sum}", "{Tom}", "{Annen.Felt}", "{@Navn}", "{@Ring}", "{@Ukjent}", "and", "or", "not", "in",
    "to", "if", "then", "else", "mod", "True", "False", "Null", "NewLine", "PageNumber",
    "TotalPages", "RecordNumber", "Today", "Sum(", "Count()", "RunningSum(", "Min(", "Average(",
    "Date(", "Year(", "ToText(", "Mid(", "Left(", "Replace(", "PadLeft(", "Lines(", "Round(",
    "Truncate(", "Mod10(", "IsNull(", "IfNull(", "Upper(", "ToNumber(", "Abs(", "Trim(", "(", ")",
    "[", "]", ",", "&", "+", "-", "*", "/", "=", "<>", "<", "<=", ">", ">=", "'x'", "\"y\"", "''",
    "'O''Hara'", "'0.00'", "'### ##0.00'", "'Ordre'", "0", "1", "00123", "2014", "12", ".5",
    "922337203685477.5807", "1000000", "Date(2014,3,9)", "{Ordre.Nr}=", "{Ordre.Status}='x'",
};
// clang-format on
constexpr uint8_t kWordsMark = 1; // the first byte of an input whose other bytes choose words

struct Column
{
    QStringView name;
    Value value;
};

const Column kColumns[] = {
    {u"Ordre.Nr", Value(qint32(7))},
    {u"Ordre.Sum", Value(Currency::fromTenThousandths(1234567))},
    {u"Ordre.Dato", Value(utcMoment(QDate(2014, 3, 9)))},
    {u"Ordre.Status", Value(u"Fakturert"_s)},
    {u"Ordre.Betalt", Value(true)},
    {u"Ordre.Logo", Value(QByteArray("bytes"))},
    {u"Sum", Value(2.5f)},
};

/// Names and values of one row.
class Row : public Names, public Environment
{
public:
    Row() : m_formula(parseFormula(u"{Ordre.Status} & 'x'")), m_ring(parseFormula(u"{@Ring}")) {}

    FieldInfo field(QStringView name) const override
    {
        for (int i = 0; i < int(std::size(kColumns)); ++i) {
            if (kColumns[i].name.compare(name, Qt::CaseInsensitive) == 0)
                return {i, typeOf(kColumns[i].value.type())};
        }
        return {};
    }
    int group(QStringView name) const override { return name == u"Ordre" ? 0 : kOwnScope; }
    Expr *formula(QStringView name) override
    {
        return name == u"Navn" ? m_formula.get() : name == u"Ring" ? m_ring.get() : nullptr;
    }
    Value field(int column) override { return kColumns[column].value; }
    Value aggregate(const Expr &expr) override
    {
        return expr.arguments.empty() ? Value(1.0) : evaluate(*expr.arguments[0], *this);
    }
    Value special(Special special) override
    {
        const bool text = special == Special::TotalPages || special == Special::TimeOfDay;
        return text ? Value(u"5"_s) : Value(3.0);
    }

private:
    ExprPtr m_formula;
    ExprPtr m_ring;
};

QString textOfInput(const uint8_t *data, size_t size)
{
    if (size == 0 || data[0] != kWordsMark)
        return QString::fromUtf8(reinterpret_cast<const char *>(data),
                                 static_cast<qsizetype>(size));
    QString text;
    for (size_t i = 1; i < size; ++i) {
        text += QLatin1StringView(kWords[data[i] % std::size(kWords)]);
        text += u' ';
    }
    return text;
}

void takeFormula(const QString &text)
{
    const ExprPtr expr = parseFormula(text);
    Row row;
    FormulaChecker checker(row);
    const Type type = checker.check(*expr);
    const Value value = evaluate(*expr, row);
    if (type != Type::Bytes && textOf(value).size() > 2 * kLongestText)
        std::abort();
}

void takeSelection(const QString &text)
{
    static const Query query(u"SELECT Ordre.Nr FROM Ordre WHERE Nr>0 ORDER BY Nr"_s);
    const QString condition = conditionOf(text, query);
    if (condition.isEmpty())
        return;
    const QString statement = query.limitedBy(condition);
    const ado::dialect::Lexed lexed = ado::dialect::lex(statement);
    try {
        const ado::dialect::Statement parsed = ado::dialect::parse(lexed);
        const auto &select = std::get<ado::dialect::Select>(parsed);
        const bool whole = select.where && select.where->kind == ado::dialect::ExprKind::And &&
                           select.orderBy.size() == 1 && select.items.size() == 1;
        if (!whole)
            std::abort();
    } catch (const RunTimeError &error) {
        // Only a limit of the dialect may refuse what was composed here.
        if (!error.description().contains(u"innviklet"_s))
            std::abort();
    }
}

template<class Take>
void attempt(const Take &take)
{
    try {
        take();
    } catch (const RunTimeError &error) {
        if (error.description().isEmpty())
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = textOfInput(data, size);
    attempt([&] { takeFormula(text); });
    attempt([&] { takeSelection(text); });
    return 0;
}
