#pragma once

#include <QDateTime>
#include <QString>

#include <functional>
#include <optional>

class Sheet;

/// Finds rows by what a user types. Letters that follow each other without a pause are one text; a
/// search that was asked for goes on until it is ended, however long the pauses.
class RowSearch
{
public:
    /// `sheet` stays the caller's and must outlive the search.
    explicit RowSearch(const Sheet &sheet) : m_sheet(sheet) {}

    void ask();
    [[nodiscard]] bool isAsked() const { return m_asked; }
    void end();

    void type(const QString &letters);
    void takeBack() { m_text.chop(1); }
    [[nodiscard]] const QString &text() const { return m_text; }

    /// The row from `first` on, and then from above, with a cell that begins with the text. What
    /// stands further left is found before what stands further right, so that a number leads to its
    /// row and a name to its own, whichever column the user is in. `isSeen` tells which columns
    /// count.
    [[nodiscard]] std::optional<int> find(int first,
                                          const std::function<bool(int col)> &isSeen) const;

private:
    const Sheet &m_sheet;
    QString m_text;
    QDateTime m_typedAt;
    bool m_asked = false;
};
