#include "paths/DialogRun_p.h"

#include "paths/PathRecorder.h"

#include <iterator>

namespace {

constexpr char kSingleTypes[] = "\n PDF(*.pdf)\n OFD(*.ofd)\n PNG(*.png)\n JPG(*.jpg)\n JPEG(*.jpeg)\n BMP(*.bmp)"
                                "\n TIF(*.tif)\n TIFF(*.tiff)\n GIF(*.gif)";

/// What dialogs of one type offer, and the folder that they share.
struct DialogKind
{
    const char *filter;
    const char *moreEntries;
    QString PathRecorder::*folder;
};

constexpr DialogKind kOtherKind = {"", "", &PathRecorder::m_documentDir};

// By PathType, from 1.
// clang-format off
constexpr DialogKind kDialogKinds[] = {
    {"All file(*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.gif)", "", &PathRecorder::m_imageDir},
    {"PDF(*.pdf)", "", &PathRecorder::m_documentDir},
    {"All file(*.pdf *.ofd *.png *.jpg *.jpeg *.bmp *.tif *.tiff *.gif)", kSingleTypes, &PathRecorder::m_mixedDir},
    {"TXT(*.txt)", "", &PathRecorder::m_textDir},
    {"All file(*.docx *.doc *.xlsx *.xls *.pptx *.ppt *.txt)", "", &PathRecorder::m_documentDir},
    {"All file(*)", "", &PathRecorder::m_documentDir},
    {"All file(*.xlsx *.xls) ", "", &PathRecorder::m_documentDir},
    {"All(*.pdf *.ofd *.png *.jpg *.jpeg *.bmp *.tif *.tiff *.gif)", kSingleTypes, &PathRecorder::m_documentDir},
};
// clang-format on

const DialogKind &kindOf(int type)
{
    return type >= 1 && type <= static_cast<int>(std::size(kDialogKinds)) ? kDialogKinds[type - 1] : kOtherKind;
}

} // namespace

DialogRun::DialogRun(int type, PathRecorder &recorder, const QString &defaultDir, const QString &filter)
    : m_folder(folderOf(type, recorder)), m_filter(filter.isEmpty() ? filterOf(type) : filter)
{
    if (m_folder.isEmpty())
        m_folder = defaultDir;
}

QString DialogRun::filterOf(int type)
{
    const DialogKind &kind = kindOf(type);
    return QLatin1String(kind.filter) + QLatin1String(kind.moreEntries);
}

QString &DialogRun::folderOf(int type, PathRecorder &recorder)
{
    return recorder.*kindOf(type).folder;
}

void DialogRun::remember(const QString &chosen)
{
    if (!chosen.isEmpty())
        m_folder = chosen.left(chosen.lastIndexOf(QLatin1Char('/')));
}
