#include "shell/sidebar/FileRow.h"

#include "controls/appearance.h"
#include "controls/smallButton.h"
#include "controls/style/Theme.h"
#include "documents/addToMerge.h"
#include "platform/tasks/spawn.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QToolButton>
#include <QToolTip>

namespace folvane {

namespace {

constexpr int closeSide = 22;
constexpr int closeIcon = 14;
constexpr int dotSide = 6;
constexpr int gap = 8;

QFont countFont()
{
    QFont font = interfaceFont(11, Weight::Medium);
    return font;
}

// Digits of one width, so that the numbers of several rows stand below each other.
int digitWidth()
{
    return QFontMetrics(countFont()).horizontalAdvance(QLatin1Char('0'));
}

} // namespace

FileRow::FileRow(AppModel& model, OpenFilePtr file, QWidget* parent)
    : SidebarRow(file->isPDF ? Icon::Document : Icon::Pictures, file->name, parent),
      m_model(model),
      m_file(std::move(file)),
      m_close(makeSmallButton(Icon::Close, closeSide, closeIcon, this))
{
    m_close->setToolTip(tr("Close"));
    m_close->setAccessibleName(tr("Close “%1”").arg(m_file->name));
    connect(m_close, &QToolButton::clicked, this, [this] { m_model.requestClose(m_file); });
    connect(this, &FileRow::clicked, this, [this] { m_model.destination = Destination::file(m_file->id); });
    m_watches.keep([this] { refresh(); }, m_file->pages, m_file->isEdited);
}

void FileRow::refresh()
{
    const QString edited = m_file->isEdited ? QStringLiteral(", ") + tr("Not saved") : QString();
    setAccessibleName(tr("%1, %2 pages").arg(m_file->name, pageCount()) + edited);
    update();
}

QString FileRow::pageCount() const
{
    return QString::number(m_file->pages.value().size());
}

int FileRow::countWidth() const
{
    return int(pageCount().size()) * digitWidth();
}

QRect FileRow::dotBox() const
{
    const int right = width() - 6 - closeSide - 4 - countWidth() - gap;
    return {right - dotSide, (height() - dotSide) / 2, dotSide, dotSide};
}

int FileRow::roomAtRight() const
{
    return width() - dotBox().left() + (m_file->isEdited ? gap : -dotSide);
}

void FileRow::drawAtRight(QPainter& painter) const
{
    if (m_file->isEdited) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::accent);
        painter.drawEllipse(dotBox());
    }
    painter.setFont(countFont());
    painter.setPen(isCurrent() || underMouse() ? theme::secondaryTextOnTint : theme::secondaryText);
    QRect digit(dotBox().right() + 1 + gap, 0, digitWidth(), height());
    for (const QChar shown : pageCount()) {
        painter.drawText(digit, Qt::AlignHCenter | Qt::AlignVCenter, shown);
        digit.translate(digitWidth(), 0);
    }
}

void FileRow::resizeEvent(QResizeEvent*)
{
    m_close->move(width() - 6 - closeSide, (height() - closeSide) / 2);
}

bool FileRow::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return SidebarRow::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const bool onDot = m_file->isEdited && dotBox().adjusted(-4, -4, 4, 4).contains(help->pos());
    QToolTip::showText(help->globalPos(), onDot ? tr("Not saved") : m_file->name.toHtmlEscaped(), this);
    return true;
}

void FileRow::contextMenuEvent(QContextMenuEvent* event)
{
    const OpenFilePtr file = m_file;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Save As…"), &m_model, [this, file] { spawn(m_model.saveAs(file)); });
    menu->addAction(tr("Add to Merge"), &m_model, [this, file] { addToMerge(m_model, *file); });
    menu->addSeparator();
    menu->addAction(tr("Close"), &m_model, [this, file] { m_model.requestClose(file); });
    menu->popup(event->globalPos());
}

} // namespace folvane
