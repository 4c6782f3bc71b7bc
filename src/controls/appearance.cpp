#include "controls/appearance.h"

#include "controls/accessibility.h"
#include "controls/style/FolvaneStyle.h"
#include "controls/style/Theme.h"
#include "controls/style/brandPictures.h"
#include "controls/style/menuKey.h"
#include "controls/style/mnemonics.h"
#include "controls/style/returnKey.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QScreen>
#include <QToolTip>

#include <cmath>

namespace folvane {

namespace {

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

// A font counts whole pixels only, but points have fractions.
void setPixels(QFont& font, double pixels)
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (pixels == std::floor(pixels) || !screen)
        font.setPixelSize(qRound(pixels));
    else
        font.setPointSizeF(pixels * 72 / screen->logicalDotsPerInchY());
}

} // namespace

void applyAppearance(QApplication& application)
{
    for (const QFileInfo& font : QDir(QStringLiteral(":/fonts")).entryInfoList(QDir::Files))
        QFontDatabase::addApplicationFont(font.filePath());
    application.setStyle(new FolvaneStyle);
    application.setPalette(theme::palette());
    application.setFont(interfaceFont(13));
    application.setWindowIcon(brandIcon());
    QToolTip::setPalette(theme::palette());
    QToolTip::setFont(interfaceFont(12));
    installAccessibility();
    letReturnPressButtons(application);
    letShiftF10OpenMenus(application);
    installMnemonics(application);
}

QFont interfaceFont(double pixels, Weight weight)
{
    QFont font(QStringLiteral("Inter"));
    setPixels(font, pixels);
    font.setWeight(fontWeight(weight));
    font.setHintingPreference(QFont::PreferNoHinting);
    // Coloured edges would flicker in whatever is faded or moves, where letters are drawn without them.
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

// The last one comes with what draws PDFs.
QFont monospacedFont(double pixels, Weight weight)
{
    QFont font = interfaceFont(pixels, weight);
    font.setFamilies({QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Liberation Mono"),
                      QStringLiteral("Noto Sans Mono"), QStringLiteral("Nimbus Mono PS")});
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    return font;
}

} // namespace folvane
