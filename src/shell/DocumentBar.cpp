#include "shell/DocumentBar.h"

#include "controls/Button.h"
#include "controls/ControlGroup.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/popUpBelow.h"
#include "controls/style/Theme.h"
#include "documents/addToMerge.h"
#include "documents/statusLine.h"
#include "platform/tasks/spawn.h"
#include "shell/ToolButtons.h"
#include "viewParts/BarTitle.h"
#include "viewParts/choosingFiles.h"

#include <QMenu>

#include <utility>

namespace folvane {

namespace {

constexpr int spacing = 10;
constexpr int narrowestName = 120;

} // namespace

QString extractTitle(const OpenFile& file)
{
    return file.selection.value().isEmpty() ? DocumentBar::tr("Extract All Pages…")
                                            : DocumentBar::tr("Extract Selected Pages…");
}

QCoro::Task<> chooseAndInsert(AppModel& model, OpenFilePtr file)
{
    return chooseFilesAnd(model, [file = std::move(file)](AppModel& into, const QList<QUrl>& urls) {
        return into.insertPages(file, urls);
    });
}

void signSelected(AppModel& model, const OpenFile& file)
{
    const bool isSelected = !file.selection.value().isEmpty();
    model.startSigning(file, isSelected ? std::optional(file.selectedPages().front().id) : std::nullopt);
}

DocumentBar::DocumentBar(AppModel& model, QWidget* parent) : QWidget(parent), m_model(model)
{
    setGround(*this, theme::surface);

    auto* row = makeRow(this, {24, 14, 24, 14}, spacing);
    m_title = new BarTitle(this);
    m_title->setMinimumWidth(narrowestName);
    row->addWidget(m_title, 1);
    row->addWidget(makePageButtons());
    row->addLayout(makeTools());
    row->addWidget(makeMoreButton());
    row->addWidget(makeSaveButton());
}

QWidget* DocumentBar::makePageButtons()
{
    auto* group = new ControlGroup(this);
    QAbstractButton* left = group->addButton(Icon::RotateLeft, tr("Rotate Left"), tr("Rotate left"));
    QAbstractButton* right = group->addButton(Icon::RotateRight, tr("Rotate Right"), tr("Rotate right"));
    m_delete = group->addButton(Icon::Delete, tr("Delete Pages"), tr("Delete the selected pages"));
    connect(left, &QAbstractButton::clicked, this, [this] { turn(false); });
    connect(right, &QAbstractButton::clicked, this, [this] { turn(true); });
    connect(m_delete, &QAbstractButton::clicked, this,
            [this] { m_model.deletePages(m_file, m_file->selection.value()); });
    return group;
}

QLayout* DocumentBar::makeTools()
{
    m_tools = new ToolButtons(this);
    Button* sign = m_tools->add(Icon::Gesture, tr("Sign & Stamp"));
    Button* compress = m_tools->add(Icon::Compress, tr("Compress"));
    Button* split = m_tools->add(Icon::Scissors, tr("Split"));
    m_password = m_tools->add(Icon::LockOutline, tr("Password"));
    connect(sign, &Button::clicked, this, [this] { signSelected(m_model, *m_file); });
    connect(compress, &Button::clicked, this, [this] { showSheet(FileSheet::Kind::Compress); });
    connect(split, &Button::clicked, this, [this] { showSheet(FileSheet::Kind::Split); });
    connect(m_password, &Button::clicked, this, [this] { showSheet(FileSheet::Kind::Password); });
    return m_tools;
}

QWidget* DocumentBar::makeMoreButton()
{
    auto* more = new Button(Button::Kind::Tool, tr("More"), this);
    more->setSymbol(Icon::More);
    more->setIconOnly(true);
    more->setToolTip(tr("Insert, extract, export as images, merge"));
    m_more = new QMenu(tr("More"), this);
    connect(more, &Button::clicked, this, [this, more] {
        fillMoreMenu();
        popUpBelow(*m_more, *more);
    });
    return more;
}

QWidget* DocumentBar::makeSaveButton()
{
    auto* save = new Button(Button::Kind::Primary, tr("Save As…"), this);
    const QKeySequence key(Qt::CTRL | Qt::Key_S); // bound in the File menu
    save->setToolTip(QStringLiteral("%1 (%2)").arg(save->text(), key.toString(QKeySequence::NativeText)));
    connect(save, &Button::clicked, this, [this] { spawn(m_model.saveAs(m_file)); });
    return save;
}

void DocumentBar::setFile(OpenFilePtr file)
{
    m_watches.clear();
    m_file = std::move(file);
    if (m_file)
        m_watches.keep([this] { refresh(); }, m_file->pages, m_file->selection, m_file->isEdited);
}

void DocumentBar::refresh()
{
    m_title->setTitle(m_file->name);
    m_title->setDetail(statusLine(*m_file));
    m_password->setSymbol(m_file->password ? Icon::Lock : Icon::LockOutline);
    const bool canDelete = !m_file->selection.value().isEmpty();
    if (!canDelete && m_delete->hasFocus())
        emit keyboardFreed(); // before Qt passes the keyboard on to the next button
    m_delete->setEnabled(canDelete);
}

// Without this the titles of the tools would keep the bar from getting so narrow that they go.
QSize DocumentBar::minimumSizeHint() const
{
    return layout()->totalMinimumSize() - QSize(m_tools->minimumSize().width() - m_tools->narrowest(), 0);
}

// What the name does not need at least is there for the titles of the tools.
void DocumentBar::resizeEvent(QResizeEvent*)
{
    const QMargins margins = layout()->contentsMargins();
    int room = width() - margins.left() - margins.right() - narrowestName;
    for (int i = 1; i < layout()->count(); ++i) {
        if (QLayoutItem* item = layout()->itemAt(i); item->layout() != m_tools)
            room -= spacing + item->sizeHint().width();
    }
    m_tools->fitInto(room - spacing);
}

void DocumentBar::turn(bool clockwise)
{
    m_model.turn(m_file, m_file->targetIDs(), clockwise);
}

void DocumentBar::showSheet(FileSheet::Kind kind)
{
    m_model.sheet = FileSheet{kind, m_file->id};
}

void DocumentBar::fillMoreMenu()
{
    const OpenFilePtr file = m_file;
    m_more->clear();
    m_more->addAction(tr("Insert Pages from Files…"), this,
                      [this, file] { spawn(chooseAndInsert(m_model, file)); });
    m_more->addAction(extractTitle(*file), this, [this, file] { spawn(m_model.extract(file)); })
        ->setEnabled(!m_model.busy.value());
    m_more->addAction(tr("Export Pages as Images…"), this,
                      [this] { showSheet(FileSheet::Kind::ExportImages); });
    m_more->addSeparator();
    m_more->addAction(tr("Add to Merge"), this, [this, file] { addToMerge(m_model, *file); });
}

} // namespace folvane
