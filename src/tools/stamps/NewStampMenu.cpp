#include "tools/stamps/NewStampMenu.h"

#include "controls/popUpBelow.h"
#include "platform/tasks/spawn.h"
#include "tools/stamps/stampFromData.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>
#include <QShortcut>

namespace folvane {

NewStampMenu::NewStampMenu(AppModel& model, QWidget* parent)
    : Button(Kind::Secondary, tr("New Signature or Stamp"), parent), m_model(model), m_menu(new QMenu(this))
{
    setSymbol(Icon::Add);
    m_menu->setTitle(text());
    m_menu->addAction(tr("From an Image File…"), this, [this] { spawn(chooseFile()); });
    m_menu->addAction(tr("Draw with Trackpad or Mouse…"), this,
                      [this] { emit chosen({StampSource::Drawing()}); });
    m_menu->addAction(tr("Ready Stamps…"), this, [this] { emit chosen({StampSource::Ready()}); });
    auto* paste = m_menu->addAction(tr("Paste"), this, &NewStampMenu::paste);
    paste->setShortcut(QKeySequence::Paste);
    paste->setShortcutContext(Qt::WidgetShortcut); // shown there; this one works while the menu is closed
    auto* keys = new QShortcut(QKeySequence::Paste, this);
    connect(keys, &QShortcut::activated, this, &NewStampMenu::paste);
    connect(this, &Button::clicked, this, [this, paste] {
        paste->setEnabled(canPaste());
        popUpBelow(*m_menu, *this);
    });
}

QCoro::Task<> NewStampMenu::chooseFile()
{
    const QPointer<NewStampMenu> self(this);
    QCoro::Task<QList<QUrl>> choosing = m_model.services().panels.chooseOpen(
        {false, {ContentType::Image}, tr("Choose a photo or scan of your signature or stamp")});
    const QList<QUrl> files = co_await choosing;
    if (self && !files.isEmpty())
        emit chosen({files.first()});
}

// An empty clipboard may have no data at all.
bool NewStampMenu::canPaste()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && offersStamp(*data, StampGesture::Paste);
}

void NewStampMenu::paste()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (const auto source = data ? stampFrom(*data, StampGesture::Paste) : std::nullopt)
        emit chosen(*source);
}

} // namespace folvane
