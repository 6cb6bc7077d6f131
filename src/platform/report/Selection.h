#pragma once

#include <QString>
#include <QStringView>

namespace report {

class Query;

/// Turns a selection such as "{Ordre.KlientNr}= 1 and {Ordre.OrdreDato} in Date(2014,1,1) to
/// Date(2014,12,31)" into a condition of the desktop dialect, so that the database picks the rows.
/// Fields are columns of any table that `query` reads. Values become literals of the dialect and
/// nothing else. kFormula when the text is no selection, names another table, or asks for what the
/// database cannot be asked. A blank selection gives the empty text.
[[nodiscard]] QString conditionOf(QStringView selection, const Query &query);

} // namespace report
