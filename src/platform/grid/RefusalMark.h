#pragma once

#include <QString>

class QAbstractItemView;
class QModelIndex;
struct CellType;

/// Lets the user see for a moment what has become of his input: a frame around the cell and a tool
/// tip under it. A later one takes its place.
void markCell(QAbstractItemView &view, const QModelIndex &cell, const QString &told);
/// That a cell of that type has not taken what was typed into it.
void markRefusal(QAbstractItemView &view, const QModelIndex &cell, const QString &typed,
                 const CellType &type);
