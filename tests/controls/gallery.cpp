// folvane-gallery FOLDER: draws every control in every state, at 100 % and 200 %, for people to look at.

#include "controls/BrandMark.h"
#include "controls/Button.h"
#include "controls/ControlGroup.h"
#include "controls/LinkButton.h"
#include "controls/SectionHeader.h"
#include "controls/SegmentedPicker.h"
#include "controls/Spinner.h"
#include "controls/appearance.h"
#include "controls/dragging/DropZone.h"
#include "controls/sheets/Alert.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/sheets/Panel.h"
#include "controls/sheets/SheetFrame.h"
#include "controls/style/Theme.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QScrollArea>
#include <QToolTip>
#include <QVBoxLayout>

namespace {

using namespace folvane;

void addStates(QGridLayout& grid, Button::Kind kind, bool destructive)
{
    const int row = grid.rowCount();
    const auto add = [&](int column, const QString& text) {
        auto* button = new Button(kind, text);
        button->setDestructive(destructive);
        button->setSymbol(column % 2 == 0 ? Icon::Scissors : Icon::Heart);
        grid.addWidget(button, row, column, Qt::AlignLeft);
        return button;
    };
    auto* plain = new Button(kind, QStringLiteral("Save As…"));
    plain->setDestructive(destructive);
    grid.addWidget(plain, row, 0, Qt::AlignLeft);
    add(1, QStringLiteral("Support"));
    auto* down = add(2, QStringLiteral("Pressed"));
    down->setDown(true);
    emit down->pressed();
    add(3, QStringLiteral("Disabled"))->setEnabled(false);
    add(4, QStringLiteral("Split"))->setIconOnly(true);
    add(5, QStringLiteral("Hover"))->setAttribute(Qt::WA_UnderMouse);
    add(6, QStringLiteral("Focus"))->setObjectName(QStringLiteral("focus"));
}

QWidget* makeControls()
{
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(28, 28, 28, 28);
    column->setSpacing(16);
    auto* head = new QHBoxLayout;
    head->setSpacing(16);
    for (const int size : {24, 32, 56, 96})
        head->addWidget(new BrandMark(size), 0, Qt::AlignVCenter);
    head->addWidget(new Spinner(16), 0, Qt::AlignVCenter);
    head->addWidget(new Spinner(32), 0, Qt::AlignVCenter);
    head->addWidget(new LinkButton(QStringLiteral("Show in Finder")), 0, Qt::AlignVCenter);
    auto* hovered = new LinkButton(QStringLiteral("Show in Finder"));
    hovered->setAttribute(Qt::WA_UnderMouse);
    head->addWidget(hovered, 0, Qt::AlignVCenter);
    head->addStretch();
    column->addLayout(head);

    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    addStates(*grid, Button::Kind::Primary, false);
    addStates(*grid, Button::Kind::Primary, true);
    addStates(*grid, Button::Kind::Secondary, false);
    addStates(*grid, Button::Kind::Tool, false);
    addStates(*grid, Button::Kind::Tool, true);
    column->addLayout(grid);

    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    auto* group = new ControlGroup;
    group->addButton(Icon::RotateLeft, QStringLiteral("Rotate Left"), {})->setAttribute(Qt::WA_UnderMouse);
    group->addButton(Icon::RotateRight, QStringLiteral("Rotate Right"), {})->setDown(true);
    group->addButton(Icon::Delete, QStringLiteral("Delete"), {})->setEnabled(false);
    bar->addWidget(group);
    for (const char* title : {"Sign & Stamp", "Compress"}) {
        auto* tool =
            new Button(Button::Kind::Tool, QString::fromLatin1(title).replace(u'&', QLatin1String("&&")));
        tool->setSymbol(Icon::Compress);
        bar->addWidget(tool);
    }
    bar->addWidget(new Button(Button::Kind::Primary, QStringLiteral("Save As…")));
    bar->addWidget(
        new SegmentedPicker(QStringLiteral("Format"), {QStringLiteral("JPEG"), QStringLiteral("PNG")}));
    bar->addWidget(
        new SegmentedPicker(QStringLiteral("Mode"),
                            {QStringLiteral("Ranges"), QStringLiteral("Every"), QStringLiteral("Single")}));
    bar->addStretch();
    column->addLayout(bar);

    auto* panel = new Panel;
    panel->content().addWidget(new SectionHeader(QStringLiteral("Updates")));
    panel->content().addWidget(new NoteBanner(
        QStringLiteral(
            "Folvane switches to the new language after a restart. Save or close the files with changes "
            "first. This note is long enough that it has to wrap onto the next line."),
        NoteBanner::Tone::Info));
    panel->content().addWidget(new NoteBanner(QStringLiteral("A warning."), NoteBanner::Tone::Warning));
    panel->content().addWidget(new NoteBanner(QStringLiteral("A danger."), NoteBanner::Tone::Danger));
    column->addWidget(panel);

    auto* fields = new QHBoxLayout;
    auto* text = new QLineEdit;
    text->setPlaceholderText(QStringLiteral("Password"));
    fields->addWidget(text);
    auto* focused = new QLineEdit(QStringLiteral("With the focus"));
    focused->setObjectName(QStringLiteral("field"));
    fields->addWidget(focused);
    auto* disabled = new QLineEdit(QStringLiteral("Disabled"));
    disabled->setEnabled(false);
    fields->addWidget(disabled);
    column->addLayout(fields);
    auto* area = new QScrollArea;
    auto* wide = new QWidget;
    wide->setFixedSize(1600, 300);
    area->setWidget(wide);
    area->setFixedHeight(90);
    column->addWidget(area);
    column->addWidget(new DropZone);
    column->addStretch();
    page->resize(1000, column->totalHeightForWidth(1000));
    return page;
}

class Gallery {
public:
    explicit Gallery(const QString& folder) : m_folder(folder) {}

    void save(QWidget* widget, const QString& name, const QColor& ground = theme::background) const
    {
        for (const int scale : {1, 2}) {
            QPixmap picture(widget->size() * scale);
            picture.setDevicePixelRatio(scale);
            picture.fill(ground);
            widget->render(&picture, QPoint(), QRegion(),
                           QWidget::DrawWindowBackground | QWidget::DrawChildren);
            picture.save(m_folder.filePath(QStringLiteral("%1@%2x.png").arg(name).arg(scale)));
        }
    }

private:
    QDir m_folder;
};

void fillMenu(QMenu& menu)
{
    menu.addAction(QStringLiteral("Rotate Left"));
    menu.addAction(QStringLiteral("Save As…"))->setShortcut(QKeySequence::SaveAs);
    menu.addAction(QStringLiteral("Sign && Stamp"))->setEnabled(false);
    auto* checked = menu.addAction(QStringLiteral("Show Sidebar"));
    checked->setCheckable(true);
    checked->setChecked(true);
    menu.addMenu(QStringLiteral("More"))->addAction(QStringLiteral("Inside"));
    menu.addSeparator();
    menu.addAction(QStringLiteral("Delete"))->setProperty("destructive", true);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 1;
    QApplication application(argc, argv);
    applyAppearance(application);
    QDir().mkpath(QString::fromLocal8Bit(argv[1]));
    const Gallery gallery(QString::fromLocal8Bit(argv[1]));

    QWidget* controls = makeControls();
    controls->show();
    controls->setAttribute(Qt::WA_KeyboardFocusChange);
    controls->activateWindow();
    QApplication::setActiveWindow(controls);
    controls->findChild<QLineEdit*>(QStringLiteral("field"))->setFocus();
    QApplication::processEvents();
    gallery.save(controls, QStringLiteral("field"));
    for (auto* button : controls->findChildren<Button*>(QStringLiteral("focus"))) {
        button->setFocus();
        QApplication::processEvents();
    }
    gallery.save(controls, QStringLiteral("controls"));

    QMenu menu;
    fillMenu(menu);
    menu.popup(QPoint(20, 20));
    menu.setActiveAction(menu.actions().at(1));
    QApplication::processEvents();
    gallery.save(&menu, QStringLiteral("menu"));
    menu.setActiveAction(menu.actions().last());
    QApplication::processEvents();
    gallery.save(&menu, QStringLiteral("menu-delete"));
    menu.hide();

    QMenuBar bar;
    bar.addMenu(QStringLiteral("File"));
    bar.addMenu(QStringLiteral("Edit"));
    bar.resize(300, bar.sizeHint().height());
    bar.show();
    gallery.save(&bar, QStringLiteral("menubar"));

    QToolTip::showText(QPoint(10, 10), QStringLiteral("Delete the selected pages"));
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QTipLabel"))
            gallery.save(widget, QStringLiteral("tooltip"));
    }

    Alert alert(
        QStringLiteral("Save changes to “A rather long name of a document that has to wrap.pdf”?"),
        QStringLiteral("Your changes will be lost if you close it without saving. The original file stays as "
                       "it was."));
    alert.addButton(QStringLiteral("Save As…"), Alert::Role::Default);
    alert.addButton(QStringLiteral("Don't Save"), Alert::Role::Destructive);
    alert.addButton(QStringLiteral("Cancel"), Alert::Role::Cancel);
    alert.open();
    QApplication::processEvents();
    gallery.save(&alert, QStringLiteral("alert"), QColor(180, 178, 176));

    SheetFrame sheet(QStringLiteral("“Salary statement.pdf” is locked"));
    sheet.setIcon(Icon::Lock);
    auto* text = new QLabel(QStringLiteral("Enter its password to open it. The password stays on this Mac."));
    text->setWordWrap(true);
    sheet.content().addWidget(text);
    sheet.content().addWidget(new QLineEdit);
    sheet.addButton(Button::Kind::Secondary, QStringLiteral("Cancel"));
    sheet.addButton(Button::Kind::Primary, QStringLiteral("Open"))->setEnabled(false);
    sheet.open();
    QApplication::processEvents();
    gallery.save(&sheet, QStringLiteral("sheet"), QColor(180, 178, 176));
    delete controls;
}
