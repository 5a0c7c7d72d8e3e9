#pragma once

#include <QString>

class PathRecorder;

/// One run of a file dialog: where it starts, what it offers, what is remembered of it. Types are PathUtils::PathType.
class DialogRun
{
public:
    /// Starts in the folder that `recorder` has for `type`, or in `defaultDir`; offers `filter`, or what the type has.
    DialogRun(int type, PathRecorder &recorder, const QString &defaultDir, const QString &filter);

    /// All types of files that a dialog of `type` offers.
    static QString filterOf(int type);
    /// The folder of `recorder` that dialogs of `type` share.
    static QString &folderOf(int type, PathRecorder &recorder);

    [[nodiscard]] const QString &filter() const { return m_filter; }
    [[nodiscard]] QString start(const QString &fileName) const { return m_folder + QLatin1Char('/') + fileName; }
    void remember(const QString &chosen);

private:
    QString &m_folder;
    QString m_filter;
};
