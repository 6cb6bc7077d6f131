#pragma once

class QSaveFile;

/// Puts what has been written in the place of the former file, if all of it has reached the disk;
/// otherwise that one stays. commit() alone does not notice that what lay in the buffer has found
/// no room.
[[nodiscard]] bool commitWhole(QSaveFile &file);
