#pragma once

#include "config/Export.h"

#include <QString>

/// The folders that the user last chose in a file dialog, for each kind of file, so that the next dialog of that kind
/// opens there. A plain holder: the dialogs decide which member is theirs and write it. Nothing is kept on disk.
///
/// Recorders may be made at will; each remembers for itself. The process-wide one is made and destroyed without a lock:
/// use it on the user-interface thread only.
class ONDPDFTOOLUTILS_EXPORT PathRecorder
{
public:
    PathRecorder();
    ~PathRecorder();

    /// The process-wide recorder, made if there is none. Owned by the class; valid until UnInitRecorder().
    static PathRecorder *GetInstance();
    /// Makes the process-wide recorder ahead of the first dialog; nothing if there is one.
    static void InitRecorder();
    /// Destroys the process-wide recorder, so that the next one starts empty; nothing if there is none.
    static void UnInitRecorder();

    QString m_imageDir; ///< Pictures.
    QString m_documentDir; ///< All kinds without a member of their own.
    QString m_mixedDir; ///< Documents and pictures in one dialog.
    /// Text files and exports. One member on purpose: choosing a text file moves the export folder, and the reverse.
    QString m_textDir;
};
