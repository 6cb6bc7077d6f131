#include "platform/grid/EditHistory.h"

#include <utility>

namespace {

constexpr size_t kMostSteps = 200; ///< the oldest fall away

EditHistory::Step turned(EditHistory::Step step)
{
    for (auto &[place, texts] : step)
        std::swap(texts.before, texts.after);
    return step;
}

/// Moves the last step of `from` over to `to`, and returns it.
EditHistory::Step moveLast(std::deque<EditHistory::Step> &from, std::deque<EditHistory::Step> &to)
{
    if (from.empty())
        return {};
    to.push_back(std::move(from.back()));
    from.pop_back();
    return to.back();
}

} // namespace

void EditHistory::note(Step &step, Place place, const QString &before, const QString &after)
{
    if (before != after)
        step.try_emplace(place, Texts{before, after}).first->second.after = after;
}

void EditHistory::add(const Step &step, bool joins)
{
    if (step.empty())
        return;
    m_undone.clear();
    if (!joins || m_done.empty())
        m_done.emplace_back();
    for (const auto &[place, texts] : step)
        note(m_done.back(), place, texts.before, texts.after);
    if (m_done.size() > kMostSteps)
        m_done.pop_front();
}

EditHistory::Step EditHistory::undo()
{
    return turned(moveLast(m_done, m_undone));
}

EditHistory::Step EditHistory::redo()
{
    return moveLast(m_undone, m_done);
}

void EditHistory::forget()
{
    m_done.clear();
    m_undone.clear();
}
