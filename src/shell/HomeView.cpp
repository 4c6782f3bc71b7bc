#include "shell/HomeView.h"

#include "controls/Button.h"
#include "controls/DropZone.h"
#include "controls/Theme.h"
#include "controls/appearance.h"
#include "platform/spawn.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace folvane {

namespace {

QLabel* makeText(const QString& text, const QFont& font, const QColor& color, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    label->setPalette(palette);
    return label;
}

} // namespace

HomeView::HomeView(AppModel& model, QWidget* parent) : QWidget(parent)
{
    auto* zone = new DropZone(this);
    zone->setMaximumWidth(844);
    auto* open = new Button(Button::Kind::Primary, tr("Open…"), this);
    auto* promise = makeText(tr("No ads. No tracking. No account."), interfaceFont(12.5, Weight::Medium),
                             theme::secondaryText, this);

    auto* middle = new QHBoxLayout; // keeps the zone centred once it is as wide as it gets
    middle->addStretch(1);
    middle->addWidget(zone, 1000);
    middle->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(28, 28, 28, 28);
    column->setSpacing(22);
    column->addStretch(2);
    column->addLayout(middle);
    column->addWidget(open, 0, Qt::AlignHCenter);
    column->addWidget(promise);
    column->addStretch(3);

    const auto choose = [&model] { spawn(model.chooseAndOpen()); };
    connect(zone, &DropZone::clicked, this, choose);
    connect(open, &Button::clicked, this, choose);
    connect(zone, &DropZone::filesDropped, this,
            [&model](const QList<QUrl>& files) { spawn(model.open(files)); });
    setFocusProxy(open);
}

} // namespace folvane
