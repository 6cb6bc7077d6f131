#pragma once

#include "platform/ado/RowSet.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <functional>
#include <optional>

namespace ado {

/// The long list that a session has read last, kept from its second reading on for as long as
/// nobody writes. A screen that asks for the same list at each step, as for the products beside an
/// order, then costs the database one question and not a walk through all rows: at 25,000 rows some
/// microseconds in place of ten milliseconds.
///
/// To be used outside transactions alone: what is read in one may be taken back.
class KeptRows
{
public:
    /// What the database says of its contents: two equal answers, and no connection of any process
    /// has changed anything between them. Empty when it cannot say.
    using Moment = std::function<QByteArray()>;

    explicit KeptRows(Moment moment) : m_moment(std::move(moment)) {}

    /// What the statement would give now; nullptr when it has to be run. To be asked before that.
    [[nodiscard]] const RowSet *answerTo(QStringView statement);
    /// The statement has been run and has given these rows.
    void take(QStringView statement, const RowSet &rows);
    void forget();

private:
    Moment m_moment;
    QString m_statement;
    QByteArray m_readAt; ///< a moment before the last reading
    std::optional<RowSet> m_rows;
};

} // namespace ado
