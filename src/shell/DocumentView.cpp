#include "shell/DocumentView.h"

#include "controls/Button.h"
#include "controls/ElidedLabel.h"
#include "controls/Theme.h"
#include "controls/appearance.h"
#include "controls/icons.h"
#include "documents/statusLine.h"
#include "platform/spawn.h"
#include "shell/PageGrid.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QVBoxLayout>

#include <utility>

namespace folvane {

namespace {

QWidget* makeLine(QWidget* parent)
{
    auto* line = new QWidget(parent);
    line->setFixedHeight(1);
    line->setAutoFillBackground(true);
    QPalette palette = line->palette();
    palette.setColor(QPalette::Window, theme::hairline);
    line->setPalette(palette);
    return line;
}

void fill(QWidget* widget, const QColor& color)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, color);
    widget->setPalette(palette);
    widget->setAutoFillBackground(true);
}

void setTextColor(QWidget* widget, const QColor& color)
{
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, color);
    widget->setPalette(palette);
}

} // namespace

QString extractTitle(const OpenFile& file)
{
    return file.selection.value().isEmpty() ? DocumentView::tr("Extract All Pages…")
                                            : DocumentView::tr("Extract Selected Pages…");
}

QCoro::Task<> chooseAndInsert(AppModel* model, OpenFilePtr file)
{
    const QPointer<AppModel> alive(model);
    const QList<ContentType> types{ContentType::Pdf, ContentType::Image};
    const QList<QUrl> urls = co_await model->chooseFiles(true, types);
    if (alive && !urls.isEmpty())
        co_await alive->insertPages(file, urls);
}

DocumentView::DocumentView(AppModel& model, QWidget* parent) : QWidget(parent), m_model(model)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeTopBar());
    column->addWidget(makeLine(this));
    m_grid = new PageGrid(model, this);
    column->addWidget(m_grid, 1);
    column->addWidget(makeLine(this));
    column->addWidget(makeFooter());
    connect(m_grid, &PageGrid::pageMenuRequested, this, &DocumentView::showPageMenu);
    setFocusProxy(m_grid);
}

QWidget* DocumentView::makeTopBar()
{
    auto* bar = new QWidget(this);
    fill(bar, theme::surface);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(24, 12, 22, 12);
    row->setSpacing(8);

    auto* titles = new QVBoxLayout;
    titles->setSpacing(2);
    m_name = new ElidedLabel(bar);
    m_name->setFont(interfaceFont(16, Weight::SemiBold));
    m_name->setMinimumWidth(120);
    m_status = new QLabel(bar);
    m_status->setFont(interfaceFont(12));
    setTextColor(m_status, theme::secondaryText);
    titles->addWidget(m_name);
    titles->addWidget(m_status);
    row->addLayout(titles, 1);
    row->addSpacing(8);

    Button* left = iconButton(themedIcon(Icon::RotateLeft, theme::text), tr("Rotate Left"), bar);
    Button* right = iconButton(themedIcon(Icon::RotateRight, theme::text), tr("Rotate Right"), bar);
    m_delete = iconButton(themedIcon(Icon::Delete, theme::text), tr("Delete Pages"), bar);
    left->setToolTip(tr("Rotate left"));
    right->setToolTip(tr("Rotate right"));
    m_delete->setToolTip(tr("Delete the selected pages"));
    Button* more = iconButton(themedIcon(Icon::More, theme::text), tr("More"), bar);
    more->setToolTip(tr("Insert and extract pages"));
    m_extract = new Button(Button::Kind::Tool, tr("Extract…"), bar);
    m_extract->setIcon(themedIcon(Icon::Upload, theme::accentDeep));
    m_save = new Button(Button::Kind::Primary, tr("Save As…"), bar);
    m_save->setToolTip(tr("Make a new PDF of these pages"));
    for (Button* button : {left, right, m_delete})
        row->addWidget(button);
    row->addSpacing(8);
    for (Button* button : {m_extract, more, m_save})
        row->addWidget(button);

    m_more = new QMenu(this);
    connect(left, &Button::clicked, this, [this] { turn(false); });
    connect(right, &Button::clicked, this, [this] { turn(true); });
    connect(m_delete, &Button::clicked, this,
            [this] { m_model.deletePages(m_file, m_file->selection.value()); });
    connect(m_extract, &Button::clicked, this, [this] { spawn(m_model.extract(m_file)); });
    connect(m_save, &Button::clicked, this, [this] { spawn(m_model.saveAs(m_file)); });
    connect(more, &Button::clicked, this, [this, more] {
        fillMoreMenu();
        m_more->popup(more->mapToGlobal(QPoint(0, more->height())));
    });
    return bar;
}

QWidget* DocumentView::makeFooter()
{
    auto* footer = new QWidget(this);
    fill(footer, theme::surface);
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(24, 8, 24, 8);
    row->setSpacing(8);
    auto* icon = new QLabel(footer);
    icon->setPixmap(themedIcon(Icon::Info, theme::secondaryText).pixmap(QSize(15, 15), devicePixelRatioF()));
    auto* hint = new ElidedLabel(footer);
    hint->setFont(interfaceFont(11.5));
    hint->setText(
        tr("Drag to reorder. Drop PDFs or images to add pages. Save As… makes a new file; the original stays "
           "as it is."));
    setTextColor(hint, theme::secondaryText);
    row->addWidget(icon);
    row->addWidget(hint, 1);
    return footer;
}

void DocumentView::setFile(OpenFilePtr file)
{
    if (file == m_file)
        return;
    m_watches.clear();
    m_file = std::move(file);
    m_grid->setFile(m_file);
    if (m_file)
        m_watches.keep([this] { refresh(); }, m_file->pages, m_file->selection, m_file->isEdited,
                       m_model.busy);
}

void DocumentView::refresh()
{
    const bool busy = m_model.busy.value().has_value();
    const bool selected = !m_file->selection.value().isEmpty();
    m_name->setText(m_file->name);
    m_status->setText(statusLine(*m_file));
    m_delete->setEnabled(selected);
    m_extract->setEnabled(!busy);
    m_extract->setToolTip(selected ? tr("Save the selected pages as a new PDF")
                                   : tr("Save all pages as a new PDF"));
    m_save->setEnabled(!busy);
}

void DocumentView::turn(bool clockwise)
{
    m_model.turn(m_file, m_file->targetIDs(), clockwise);
}

void DocumentView::fillMoreMenu()
{
    const OpenFilePtr file = m_file;
    m_more->clear();
    m_more->addAction(tr("Insert Pages from Files…"), this,
                      [this, file] { spawn(chooseAndInsert(&m_model, file)); });
    m_more->addAction(extractTitle(*file), this, [this, file] { spawn(m_model.extract(file)); })
        ->setEnabled(!m_model.busy.value());
}

void DocumentView::showPageMenu(const QUuid& page, const QPoint& position)
{
    const OpenFilePtr file = m_file;
    const QSet<QUuid> selected = file->selection.value();
    const QSet<QUuid> pages = selected.contains(page) ? selected : QSet<QUuid>{page};
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Rotate Left"), this, [this, file, pages] { m_model.turn(file, pages, false); });
    menu->addAction(tr("Rotate Right"), this, [this, file, pages] { m_model.turn(file, pages, true); });
    menu->addAction(tr("Extract…"), this,
                    [this, file, pages] {
                        file->selection = pages;
                        spawn(m_model.extract(file));
                    })
        ->setEnabled(!m_model.busy.value());
    menu->addSeparator();
    menu->addAction(tr("Delete"), this, [this, file, pages] { m_model.deletePages(file, pages); });
    menu->popup(position);
}

} // namespace folvane
