#pragma once

#include "platform/ado/AdoTypes.h"
#include "platform/ado/RowSet.h"

#include <QDate>
#include <QString>
#include <QStringView>

#include <memory>
#include <optional>
#include <vector>

namespace ado {

class ColumnStore;
class Connection;
class Session;

/// What a record set tells of one of its columns.
struct Field
{
    QString name;
    DataType type = DataType::Empty;
    int definedSize = 0; ///< characters of a text column, bytes of the others
};

/// The rows of a query, kept in memory by typed columns. Detached from its connection it is a value
/// of its own that can be walked, edited and written back later. Not copyable; movable.
///
/// Reading where there is no current row raises 3021, an unknown field name or number 3265, any use
/// of the rows of a closed set 3704. Field names match without regard to case.
class Recordset
{
public:
    Recordset();
    ~Recordset();
    Recordset(Recordset &&) noexcept;
    Recordset &operator=(Recordset &&) noexcept;

    /// The connection by text: a session of its own is taken for each open or requery.
    void setActiveConnection(const QString &connectionString);
    /// The connection by object, not owned; it must outlive the attachment.
    void setActiveConnection(Connection &connection);
    /// Detaches: the rows stay. Changes written in a transaction that has not been committed by
    /// then count as not written.
    void clearActiveConnection();

    void setCursorLocation(CursorLocation location) { m_cursorLocation = location; }
    void setCursorType(CursorType type) { m_cursorType = type; }
    void setLockType(LockType type) { m_lockType = type; }
    void setSource(const QString &statement) { m_source = statement; }
    [[nodiscard]] CursorLocation cursorLocation() const { return m_cursorLocation; }
    [[nodiscard]] CursorType cursorType() const { return m_cursorType; }
    [[nodiscard]] LockType lockType() const { return m_lockType; }
    [[nodiscard]] const QString &source() const { return m_source; }
    [[nodiscard]] ObjectState state() const;

    /// Runs the source and reads all rows; the first one is current. 3705 when open already, 3709
    /// without a connection. A source that returns no rows runs and leaves the set closed.
    void open(int options = options::kUnspecified);
    /// Runs the source again; 3709 when detached.
    void requery();
    void close();

    [[nodiscard]] bool bof() const;
    [[nodiscard]] bool eof() const;
    [[nodiscard]] int recordCount() const;
    void moveFirst();
    void moveLast();
    void moveNext();     ///< 3021 when at EOF
    void movePrevious(); ///< 3021 when at BOF
    /// 1 for the first row; 0 when there is no current row.
    [[nodiscard]] int absolutePosition() const;
    void setAbsolutePosition(int position);

    [[nodiscard]] int fieldCount() const;
    [[nodiscard]] const Field &field(int index) const;
    [[nodiscard]] int fieldIndex(QStringView name) const;

    /// The current row's value.
    [[nodiscard]] Value value(int index) const;
    [[nodiscard]] Value value(QStringView name) const { return value(fieldIndex(name)); }
    [[nodiscard]] bool isNull(int index) const;
    /// As value(index).toText() and so on, without the detour over a Value.
    [[nodiscard]] QString text(int index) const;
    /// Behind `text`, without a text object of its own.
    void appendText(QString &text, int index) const;
    [[nodiscard]] QString text(QStringView name) const { return text(fieldIndex(name)); }
    [[nodiscard]] Currency currency(int index) const;
    [[nodiscard]] Currency currency(QStringView name) const { return currency(fieldIndex(name)); }
    [[nodiscard]] qint32 integer(int index) const;
    [[nodiscard]] qint32 integer(QStringView name) const { return integer(fieldIndex(name)); }
    [[nodiscard]] float single(int index) const;
    [[nodiscard]] float single(QStringView name) const { return single(fieldIndex(name)); }
    /// As value(index).toDate().date().
    [[nodiscard]] QDate date(int index) const;
    /// The texts of that field in all rows, one after the other, parted by `mark`; a Null is empty.
    [[nodiscard]] QString joined(int index, char mark) const;

    /// Changes the current row in memory; 3251 on a read-only set.
    void setValue(int index, const Value &value);
    void setValue(QStringView name, const Value &value) { setValue(fieldIndex(name), value); }
    /// Adds an empty row and makes it current; pending until updateBatch.
    void addNew();
    /// Writes the changes through the attached connection: changed columns only, rows found by
    /// their key. A changed row that hits none raises kRowNotFound; a set without the key of its
    /// one table raises kSyntax.
    void updateBatch(AffectRecords affected = AffectRecords::All);

private:
    friend class Connection;
    explicit Recordset(std::unique_ptr<RowSet> rows); // a detached set, for schema lists

    std::shared_ptr<Session> session() const; // 3709 without one
    void read();
    void describeFields();
    RowSet &rows() const;              // 3704 when closed
    int currentRow() const;            // 3021 when there is none
    int checkedIndex(int index) const; // 3265 outside the fields
    // The column when its current value can be read straight: of that type, unchanged, not Null.
    const ColumnStore *stored(int index, DataType type) const;
    void settleChanges();
    void checkWritable() const; // 3251 when read-only

    CursorLocation m_cursorLocation = CursorLocation::Server;
    CursorType m_cursorType = CursorType::ForwardOnly;
    LockType m_lockType = LockType::ReadOnly;
    QString m_source;
    QString m_activeConnectionString;
    Connection *m_activeConnection = nullptr;
    std::unique_ptr<RowSet> m_rows;
    // Of the last write-back within a transaction: the changes before it, and what became of it.
    std::optional<RowChanges> m_changesBefore;
    std::shared_ptr<const bool> m_committed;
    std::vector<Field> m_fields;
    int m_position = 0; // 0-based row; -1 before the first, recordCount() after the last
};

} // namespace ado
