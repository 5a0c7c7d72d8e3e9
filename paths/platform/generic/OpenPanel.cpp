#include "paths/platform/OpenPanel_p.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QThread>

namespace platform {

namespace {

bool canShowWidgets()
{
    const auto *application = qobject_cast<QApplication *>(QCoreApplication::instance());
    return application && application->thread() == QThread::currentThread();
}

/// A file dialog that takes a folder for an answer in its file mode too, instead of entering it.
class Panel : public QFileDialog
{
public:
    explicit Panel(const OpenPanelRequest &request) : m_prompt(QString::fromStdString(request.prompt))
    {
        // Native dialogs choose either files or folders.
        setOption(DontUseNativeDialog);
        setFileMode(request.foldersOnly ? Directory : ExistingFile);
        setOption(ShowDirsOnly, request.foldersOnly); // which the file mode clears
        if (!request.startFolder.empty())
            setDirectory(QFile::decodeName(request.startFolder.c_str()));
        if (!m_prompt.isEmpty()) {
            setLabelText(Accept, m_prompt);
            setWindowTitle(titleFor(request));
        }
        if (auto *name = findChild<QLineEdit *>("fileNameEdit"); name && !request.foldersOnly)
            followHighlight(name);
    }

    [[nodiscard]] std::vector<std::string> chosenPaths() const
    {
        std::vector<std::string> paths;
        for (const QString &file : selectedFiles())
            paths.push_back(QFile::encodeName(QDir::cleanPath(file)).toStdString());
        return paths;
    }

protected:
    void accept() override
    {
        const QStringList files = selectedFiles();
        if (files.size() == 1 && QFileInfo(files.front()).isDir())
            QDialog::accept(); // NOLINT(bugprone-parent-virtual-call): QFileDialog would enter the folder
        else
            QFileDialog::accept();
    }

private:
    /// What the panel is there for, in the only words that it is given.
    QString titleFor(const OpenPanelRequest &request) const
    {
        const QString folder = QFile::decodeName(request.startFolder.c_str());
        return folder.isEmpty() ? m_prompt : QStringLiteral("%1 \u2013 %2").arg(m_prompt, folder);
    }

    /// In its file mode the dialog names no highlighted folder, and promises to enter it. Queued, because it changes
    /// the highlight before the name and the button.
    void followHighlight(QLineEdit *name)
    {
        const auto showPrompt = [this] {
            if (!m_prompt.isEmpty())
                setLabelText(Accept, m_prompt);
        };
        const auto showName = [this, name, showPrompt](const QString &path) {
            if (const QFileInfo info(path); info.isDir() && info.dir() == directory())
                name->setText(info.fileName());
            showPrompt();
        };
        connect(this, &QFileDialog::currentChanged, name, showName, Qt::QueuedConnection);
        connect(name, &QLineEdit::textChanged, this, showPrompt, Qt::QueuedConnection);
        connect(this, &QFileDialog::directoryEntered, name, &QLineEdit::clear);
    }

    QString m_prompt;
};

} // namespace

std::optional<std::vector<std::string>> runOpenPanel(const OpenPanelRequest &request)
{
    if (!canShowWidgets())
        return std::nullopt;
    Panel panel(request);
    return panel.exec() == QDialog::Accepted ? std::optional(panel.chosenPaths()) : std::nullopt;
}

} // namespace platform
