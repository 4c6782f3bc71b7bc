#include "shell/WindowPictures.h"

#include "controls/appearance.h"
#include "engine/PDFEngine.h"
#include "platform/spawn.h"
#include "platform/writeFile.h"
#include "shell/DocumentView.h"
#include "shell/PageGrid.h"
#include "shell/RootView.h"
#include "shell/currentFile.h"

#include <QCoro/QCoroSignal>
#include <QCoro/QCoroTimer>
#include <QDialog>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace folvane {

namespace {

constexpr int samplePages = 14;

void drawSamplePage(QPainter& painter, const QRect& page, int number)
{
    const auto unit = [&page](double part) { return static_cast<int>(page.width() * part); };
    const QColor color = QColor::fromHsv(number * 47 % 360, 80, 200);
    painter.fillRect(QRect(0, unit(0.08), unit(0.5), unit(0.012)), color);
    painter.setFont(QFont(QStringLiteral("Inter"), 26, QFont::DemiBold));
    painter.setPen(QColor(40, 40, 40));
    painter.drawText(QRect(0, unit(0.11), page.width(), unit(0.12)), Qt::AlignLeft,
                     QStringLiteral("Chapter %1").arg(number));
    const bool hasPicture = number % 3 == 1;
    if (hasPicture)
        painter.fillRect(QRect(0, unit(0.26), page.width(), std::min(unit(0.45), page.height() - unit(0.26))),
                         color.lighter(130));
    const int top = unit(hasPicture ? 0.78 : 0.28);
    for (int line = 0; top + unit(line * 0.034) < page.height(); ++line) {
        const double length = line % 6 == 5 ? 0.55 : 0.94 + 0.06 * ((line * 7 + number) % 5) / 4;
        painter.fillRect(QRect(0, top + unit(line * 0.034), unit(length), unit(0.01)), QColor(190, 188, 186));
    }
}

QDialog* shownDialog(const QWidget& window)
{
    for (QDialog* dialog : window.findChildren<QDialog*>()) {
        if (dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

} // namespace

WindowPictures::WindowPictures(AppModel& model, RootView& window, const QString& folder)
    : m_model(model), m_window(window), m_folder(folder)
{
    if (!QDir().mkpath(folder))
        throw std::runtime_error(qPrintable(QStringLiteral("%1 cannot be made.").arg(folder)));
}

QCoro::Task<> WindowPictures::take(QList<QUrl> files)
{
    co_await painted();
    save(QStringLiteral("home"));
    if (files.isEmpty())
        files.append(makeSample());
    co_await open(files);
    const OpenFilePtr file = currentFile(m_model);
    if (!file)
        throw std::runtime_error("No file was opened.");
    co_await painted();
    save(QStringLiteral("document"));

    QSet<QUuid> some;
    for (const PageItem& page : file->pages.value()) {
        if (some.size() < 3)
            some.insert(page.id);
    }
    file->selection = some;
    m_model.turn(file, {file->pages.value().back().id}, true);
    co_await painted();
    save(QStringLiteral("selection"));
    co_await takePassword();
    co_await takeAlert();
    co_await takeClosing();
}

// Nobody is there to answer: locked files are left out, and what could not be opened goes to standard error.
QCoro::Task<> WindowPictures::open(QList<QUrl> files)
{
    const QCoro::Task<> opening = m_model.open(files);
    while (!opening.isReady()) {
        m_model.answerPassword(std::nullopt);
        co_await painted();
    }
    if (const std::optional<QString> message = m_model.errorMessage.value())
        std::fprintf(stderr, "%s\n", qPrintable(*message));
    m_model.errorMessage = std::nullopt;
}

QCoro::Task<> WindowPictures::takePassword()
{
    const QUrl locked = co_await makeLocked();
    spawn(m_model.open({locked}));
    while (!m_model.passwordRequest.value())
        co_await painted();
    save(QStringLiteral("password"));
    m_model.answerPassword(std::nullopt);
    co_await painted();
}

QCoro::Task<> WindowPictures::takeAlert()
{
    const QUrl missing = QUrl::fromLocalFile(m_temporary.filePath(QStringLiteral("Missing.pdf")));
    const QList<QUrl> files{missing};
    co_await m_model.open(files);
    if (!m_model.errorMessage.value())
        throw std::runtime_error("A missing file was not reported.");
    co_await painted();
    save(QStringLiteral("alert"));
    m_model.errorMessage = std::nullopt;
}

QCoro::Task<> WindowPictures::takeClosing()
{
    m_model.requestClose(currentFile(m_model));
    if (!m_model.closingFile.value())
        throw std::runtime_error("Closing an edited file did not ask.");
    co_await painted();
    save(QStringLiteral("closing"));
    m_model.closingFile = nullptr;
}

// Waits until the window has nothing more to show: a turn of the event loop for what was just set, then the pages.
QCoro::Task<> WindowPictures::painted()
{
    const PageGrid& grid = m_window.documentView().grid();
    do {
        co_await QCoro::sleepFor(std::chrono::milliseconds(20));
    } while (!grid.isComplete());
}

QUrl WindowPictures::makeSample() const
{
    const QString path = m_temporary.filePath(QStringLiteral("Annual report.pdf"));
    QPdfWriter writer(path);
    writer.setResolution(150);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(18, 18, 18, 18), QPageLayout::Millimeter);
    QPainter painter(&writer);
    for (int number = 1; number <= samplePages; ++number) {
        if (number > 1) {
            const bool wide = number % 5 == 0;
            writer.setPageOrientation(wide ? QPageLayout::Landscape : QPageLayout::Portrait);
            writer.newPage();
        }
        drawSamplePage(painter,
                       QRect(QPoint(), writer.pageLayout().paintRectPixels(writer.resolution()).size()),
                       number);
    }
    painter.end();
    return QUrl::fromLocalFile(path);
}

QCoro::Task<QUrl> WindowPictures::makeLocked()
{
    const BuildPlan plan{.pages = currentFile(m_model)->selectedPages(),
                         .stampFiles = {},
                         .password = QStringLiteral("x"),
                         .quality = std::nullopt};
    const QByteArray bytes = co_await m_model.engine().build(plan, std::stop_token());
    const QUrl locked = QUrl::fromLocalFile(m_temporary.filePath(QStringLiteral("Salary statement.pdf")));
    writeFile(locked, bytes);
    co_return locked;
}

// Dialogs are windows of their own: the picture shows them where they stand over the main window.
void WindowPictures::save(const QString& name) const
{
    QPixmap picture = m_window.grab();
    if (QDialog* dialog = shownDialog(m_window)) {
        QPainter painter(&picture);
        painter.fillRect(m_window.rect(), QColor(0, 0, 0, 40));
        QRect place(QPoint(), dialog->size());
        place.moveCenter(m_window.rect().center());
        painter.drawPixmap(place.topLeft(), dialog->grab());
        painter.setPen(QColor(0, 0, 0, 70));
        painter.drawRect(place.adjusted(-1, -1, 0, 0));
    }
    const QString path = m_folder.filePath(name + QStringLiteral(".png"));
    if (!picture.save(path))
        throw std::runtime_error(qPrintable(QStringLiteral("%1 cannot be written.").arg(path)));
}

} // namespace folvane
