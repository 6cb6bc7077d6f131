#pragma once

class QByteArray;
class QIODevice;
class QSaveFile;

/// Puts a file of these bytes in the place of the former one, if all of them have reached the disk;
/// otherwise that one stays. `file` is open and empty.
[[nodiscard]] bool writeWhole(QSaveFile &file, const QByteArray &bytes);
/// The same with all that is still to be read from a device, a block at a time.
[[nodiscard]] bool writeWhole(QSaveFile &file, QIODevice &from);
