#include "platform/report/RowEnvironment.h"

#include "platform/report/Functions.h"
#include "runtime/Clock.h"
#include "runtime/Moment.h"

#include <algorithm>

namespace report {

namespace {

constexpr unsigned kLooksBetween = 16; // each costs less than the checkpoint itself

bool isSame(const Span &a, const Span &b)
{
    return a.first == b.first && a.end == b.end && a.serial == b.serial;
}

Value average(const Value &sum, int count)
{
    if (sum.type() == DataType::Currency)
        return Value(Currency::fromDouble(sum.toCurrency().toDouble() / count));
    return Value(numberOf(sum) / count);
}

} // namespace

RowEnvironment::RowEnvironment(Rows &rows, const Groups &groups, int slotCount,
                               Checkpoint checkpoint)
    : m_rows(rows), m_groups(groups), m_totals(size_t(slotCount)), m_own(groups.whole()),
      m_now(Clock::current().now()), m_checkpoint(std::move(checkpoint))
{
}

void RowEnvironment::pass()
{
    if (m_looks++ % kLooksBetween == 0 && m_checkpoint)
        m_checkpoint();
}

Value RowEnvironment::special(Special special)
{
    switch (special) {
    case Special::PageNumber:
        return Value(double(m_page));
    case Special::TotalPages:
        return Value(QString(kTotalPagesMark));
    case Special::RecordNumber:
        return Value(double(m_row + 1));
    case Special::TimeOfDay:
        return Value(m_now.time().toString(u"HH:mm"));
    case Special::Today:
        break;
    }
    return Value(utcMoment(m_now.date()));
}

Value RowEnvironment::aggregate(const Expr &expr)
{
    Span span = m_own;
    if (expr.scope == kWholeReport)
        span = m_groups.whole();
    else if (expr.scope != kOwnScope)
        span = m_groups.span(expr.scope, m_row);

    if (isRunning(expr.aggregate) && span.picked)
        span.picked = span.running;
    int end = span.picked ? int(span.picked->size()) : span.end;
    if (isRunning(expr.aggregate) && !span.picked)
        end = std::min(end, m_row + 1);

    Total &total = m_totals[size_t(expr.slot)];
    if (!isSame(total.span, span) || total.next > end)
        total = Total{span, span.picked ? 0 : span.first, 0, {}};
    advance(total, expr, end);

    switch (expr.aggregate) {
    case Aggregate::Count:
    case Aggregate::RunningCount:
        return Value(double(total.count));
    case Aggregate::Average:
        return total.count == 0 ? Value() : average(total.sum, total.count);
    default:
        return total.sum;
    }
}

void RowEnvironment::advance(Total &total, const Expr &expr, int end)
{
    const int row = m_row;
    for (; total.next < end; ++total.next) {
        pass();
        m_row = total.span.picked ? (*total.span.picked)[size_t(total.next)] : total.next;
        if (expr.once.isEmpty() || m_groups.span(expr.onceScope, m_row).first == m_row)
            take(total, expr);
    }
    m_row = row;
}

void RowEnvironment::take(Total &total, const Expr &expr)
{
    if (expr.arguments.empty()) {
        ++total.count;
        return;
    }
    const Value value = evaluate(*expr.arguments[0], *this);
    if (value.isNull())
        return;
    ++total.count;
    switch (expr.aggregate) {
    case Aggregate::Min:
        if (total.sum.isNull() || compare(value, total.sum) < 0)
            total.sum = value;
        break;
    case Aggregate::Max:
        if (total.sum.isNull() || compare(value, total.sum) > 0)
            total.sum = value;
        break;
    case Aggregate::Count:
    case Aggregate::RunningCount:
        break;
    default:
        total.sum = sumOf(total.sum, value);
    }
}

} // namespace report
