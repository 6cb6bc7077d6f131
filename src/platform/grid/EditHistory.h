#pragma once

#include <QString>

#include <compare>
#include <deque>
#include <map>

/// What has been changed in a grid's cells, in steps that can be undone and done again. A step is
/// what one key of the user did, with what the screen wrote in answer.
class EditHistory
{
public:
    /// By row, then by column: the order in which a sheet is read.
    struct Place
    {
        int row = 1;
        int col = 1;
        friend auto operator<=>(const Place &, const Place &) = default;
    };
    struct Texts
    {
        QString before;
        QString after;
    };
    using Step = std::map<Place, Texts>;

    /// Adds a change to a step. Of several to one cell the first text and the last one stand.
    static void note(Step &step, Place place, const QString &before, const QString &after);

    /// What was undone cannot be done again after it. With `joins` the step goes on with the one
    /// before. A step that changes nothing is none.
    void add(const Step &step, bool joins);
    /// The step to be undone, or to be done again, turned so that `after` is what the cells are to
    /// hold; empty when there is none.
    [[nodiscard]] Step undo();
    [[nodiscard]] Step redo();
    void forget();

private:
    std::deque<Step> m_done;
    std::deque<Step> m_undone;
};
