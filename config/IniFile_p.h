#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <QVariant>
#include <functional>

/// What the stores of this library need of an INI file beyond what QSettings does by itself. Callable from any thread;
/// a QSettings object by one thread at a time.
///
/// A file is sound when it is a regular one of at most 16 MiB in which no value begins with "@Variant(". Opening a FIFO
/// would wait for a writer, and QSettings unpacks a serialized value whatever depth and lengths it claims, which may
/// end the process. What these stores hold needs no such value.
namespace ini {

/// The path to open a QSettings on for reading: `path` for a sound file, otherwise that of a file which never exists.
[[nodiscard]] QString readable(const QString &path);
/// Whether a QSettings opened on `path` may write: there is a sound file or nothing, and a regular file or nothing
/// where QSettings puts its lock file.
[[nodiscard]] bool isWritable(const QString &path);

/// The text of a key, "section/name". What QSettings reads as a list, since it has commas and no quotes, comes back as
/// the one text that stands in the file. That reads the file once more; all other texts are QSettings' own.
[[nodiscard]] QString text(const QSettings &settings, const QString &key, const QString &defaultValue);
/// A value that QSettings has read, as a text; a list's parts are joined by ",".
[[nodiscard]] QString text(const QVariant &value);

/// Opens the file, lets `set` set values, and writes them, without losing what another process or thread wrote at the
/// same moment (WriteTurn). Creates a missing file and its folders. Nothing happens when the file cannot be written.
/// Values are set within the turn, since every QSettings on a file writes the changes of all others in its process.
void change(const QString &path, const std::function<void(QSettings &)> &set);

/// Sets one value in the file and leaves every other byte of it as it stands: comments, order, and texts that QSettings
/// would write back in another form; only a last line without an end gets one. Atomic, in a WriteTurn.
/// Creates a missing file and its folders. Whether it was written; false, and nothing is changed, when the file is not
/// sound, or cannot be read or written.
bool setValue(const QString &path, const QByteArray &section, const QByteArray &key, const QByteArray &value);

} // namespace ini
