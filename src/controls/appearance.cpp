#include "controls/appearance.h"

#include "controls/Theme.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>
#include <QWidget>

namespace folvane {

namespace {

// What the style has no setting for: scroll bars without steps, and the line between sidebar and main area.
constexpr char lines[] = R"(
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }
QScrollBar::handle:vertical { background: rgba(0, 0, 0, 70); border-radius: 4px; min-height: 32px; margin: 2px; }
QScrollBar::handle:vertical:hover { background: rgba(0, 0, 0, 110); }
QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: transparent; }
QSplitter::handle { background: rgba(0, 0, 0, 18); }
)";

QPalette lightPalette()
{
    QPalette palette(theme::text, theme::background);
    palette.setColor(QPalette::Window, theme::background);
    palette.setColor(QPalette::WindowText, theme::text);
    palette.setColor(QPalette::Base, theme::surface);
    palette.setColor(QPalette::AlternateBase, theme::background);
    palette.setColor(QPalette::Text, theme::text);
    palette.setColor(QPalette::PlaceholderText, QColor(107, 100, 94, 160));
    palette.setColor(QPalette::Button, QColor(250, 249, 247));
    palette.setColor(QPalette::ButtonText, theme::text);
    palette.setColor(QPalette::BrightText, theme::surface);
    palette.setColor(QPalette::Highlight, theme::accent);
    palette.setColor(QPalette::HighlightedText, theme::surface);
    palette.setColor(QPalette::Link, theme::accentDeep);
    palette.setColor(QPalette::LinkVisited, theme::accentDeep);
    palette.setColor(QPalette::ToolTipBase, theme::surface);
    palette.setColor(QPalette::ToolTipText, theme::text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(166, 160, 154));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(214, 210, 205));
    return palette;
}

QFont::Weight fontWeight(Weight weight)
{
    switch (weight) {
    case Weight::Regular: return QFont::Normal;
    case Weight::Medium: return QFont::Medium;
    case Weight::SemiBold: return QFont::DemiBold;
    case Weight::Bold: return QFont::Bold;
    }
    Q_UNREACHABLE();
}

} // namespace

void applyAppearance(QApplication& application)
{
    for (const QFileInfo& font : QDir(QStringLiteral(":/fonts")).entryInfoList(QDir::Files))
        QFontDatabase::addApplicationFont(font.filePath());
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    application.setPalette(lightPalette());
    application.setFont(interfaceFont(13));
    application.setStyleSheet(QString::fromLatin1(lines));
}

bool showsFocus(const QWidget& widget)
{
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

QFont interfaceFont(double pixels, Weight weight)
{
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(qRound(pixels));
    font.setWeight(fontWeight(weight));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

} // namespace folvane
