#pragma once

#include <QByteArray>
#include <string>

/// What reading a file came to.
struct FileContent
{
    enum class State {
        read, ///< `bytes` holds the whole file
        missing, ///< nothing lies at the path, or the path cannot name anything
        irregular, ///< a folder, FIFO, socket or device lies there
        tooLarge, ///< more bytes than the limit
        unreadable, ///< not to be opened, or not to be read to its end
    };

    State state;
    QByteArray bytes; ///< empty unless the file was read

    [[nodiscard]] bool isRead() const { return state == State::read; }
};

/// The bytes of the regular file at `path`, links followed, if there are at most `limit` of them.
///
/// Never waits for the other side of a FIFO: the file is opened without waiting, and looked at once it is open, so that
/// nobody can put something else in its place in between. Reads to the end, whatever size the file system tells.
/// Callable from any thread.
[[nodiscard]] FileContent readRegularFile(const std::string &path, int limit);
