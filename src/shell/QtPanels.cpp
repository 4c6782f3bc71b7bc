#include "shell/QtPanels.h"

#include "controls/sheets/Alert.h"
#include "platform/files/fileKind.h"
#include "shell/lossQuestion.h"

#include <QCoro/QCoroSignal>
#include <QFileDialog>

namespace folvane {

namespace {

QStringList patterns(const QStringList& extensions)
{
    QStringList patterns;
    for (const QString& extension : extensions)
        patterns << QStringLiteral("*.") + extension << QStringLiteral("*.") + extension.toUpper();
    return patterns;
}

QString filter(const QList<ContentType>& types)
{
    QStringList extensions;
    if (types.contains(ContentType::Pdf))
        extensions << QStringLiteral("pdf");
    if (types.contains(ContentType::Image))
        extensions << pictureExtensions();
    const QString title = types == QList{ContentType::Pdf}     ? QtPanels::tr("PDFs")
                          : types == QList{ContentType::Image} ? QtPanels::tr("Images")
                                                               : QtPanels::tr("PDFs and images");
    return QStringLiteral("%1 (%2)").arg(title, patterns(extensions).join(u' '));
}

/// A panel that ends with the window at the latest, and is gone once its answer is read.
using DialogPtr = QPointer<QFileDialog>;

DialogPtr makeDialog(QWidget* window, const QString& title, const std::optional<QUrl>& folder)
{
    auto* dialog = new QFileDialog(window, title);
    dialog->setSupportedSchemes({QStringLiteral("file")}); // files are read and written by their paths
    if (folder)
        dialog->setDirectoryUrl(*folder);
    return dialog;
}

/// Shows the panel; what was chosen, nothing on Cancel.
QCoro::Task<QList<QUrl>> chosen(DialogPtr dialog)
{
    dialog->open();
    QFileDialog* const panel = dialog.data();
    const int result = co_await qCoro(panel, &QDialog::finished);
    if (!dialog)
        co_return QList<QUrl>();
    if (QWidget* below = dialog->parentWidget())
        below->activateWindow(); // not every window manager gives it the keyboard back
    QList<QUrl> urls = dialog->selectedUrls();
    urls.removeIf([](const QUrl& url) { return !url.isLocalFile(); }); // not every panel keeps to the schemes
    dialog->deleteLater();
    if (result != QDialog::Accepted)
        co_return QList<QUrl>();
    co_return urls;
}

std::optional<QUrl> first(const QList<QUrl>& urls)
{
    return urls.isEmpty() ? std::nullopt : std::optional(urls.first());
}

} // namespace

QCoro::Task<std::optional<QUrl>> QtPanels::chooseSave(SavePanel panel)
{
    const DialogPtr dialog = makeDialog(m_window, tr("Save As…"), panel.folder);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(filter({ContentType::Pdf}));
    // No default ending: some panels add it behind their own question about replacing. The model adds it and asks.
    dialog->selectFile(panel.name);
    const QList<QUrl> urls = co_await chosen(dialog);
    co_return first(urls);
}

QCoro::Task<std::optional<QUrl>> QtPanels::chooseFolder(FolderPanel panel)
{
    const DialogPtr dialog = makeDialog(m_window, panel.prompt, panel.folder);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, panel.prompt);
    const QList<QUrl> urls = co_await chosen(dialog);
    co_return first(urls);
}

QCoro::Task<QList<QUrl>> QtPanels::chooseOpen(OpenPanel panel)
{
    const DialogPtr dialog = makeDialog(m_window, panel.message, std::nullopt);
    dialog->setFileMode(panel.multiple ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    dialog->setNameFilter(filter(panel.types));
    const QList<QUrl> urls = co_await chosen(dialog);
    co_return urls;
}

QCoro::Task<bool> QtPanels::confirmReplace(QUrl existing)
{
    QPointer<Alert> alert =
        lossQuestion(tr("“%1” already exists. Do you want to replace it?").arg(existing.fileName()),
                     tr("Replacing it overwrites what it holds now."), tr("Replace"), m_window);
    alert->open();
    Alert* const panel = alert.data();
    const int result = co_await qCoro(panel, &QDialog::finished);
    if (alert)
        alert->deleteLater();
    co_return result != QDialog::Rejected;
}

} // namespace folvane
