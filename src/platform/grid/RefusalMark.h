#pragma once

#include <QString>

class QAbstractItemView;
class QModelIndex;
struct CellType;

/// Lets the user see for a moment that a cell of that type has not taken what was typed into it: a
/// frame around the cell and a tool tip under it. A later one takes its place.
void markRefusal(QAbstractItemView &view, const QModelIndex &cell, const QString &typed,
                 const CellType &type);
