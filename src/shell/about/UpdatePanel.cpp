#include "shell/about/UpdatePanel.h"

#include "config.h"
#include "controls/Button.h"
#include "controls/Spinner.h"
#include "controls/accessibility.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "controls/texts/NoteLabel.h"
#include "shell/about/aboutPanel.h"
#include "viewParts/openLink.h"

#include <utility>

namespace folvane {

namespace {

constexpr int iconSide = 16;

} // namespace

UpdatePanel::UpdatePanel(AppModel& model, QWidget* parent) : Panel(aboutPanelPadding, parent), m_model(model)
{
    addTitle(*this, tr("Updates"));
    content().setSpacing(12);
    m_check = new Button(Button::Kind::Secondary, tr("Check for Updates"), this);
    m_download = new Button(Button::Kind::Primary, tr("Download"), this);
    content().addWidget(m_check, 0, Qt::AlignLeft);
    content().addWidget(makeStatus());
    content().addWidget(m_download, 0, Qt::AlignLeft);
    connect(m_check, &Button::clicked, this, [this] { m_model.updates.check(); });
    connect(m_download, &Button::clicked, this, &UpdatePanel::download);
    m_watches.keep([this] { refresh(); }, model.updates.isChecking, model.updates.result);
}

QWidget* UpdatePanel::makeStatus()
{
    auto* status = new QWidget(this);
    m_spinner = new Spinner(iconSide, status);
    m_icon = new QLabel(status);
    m_status = new NoteLabel(QString(), 13, status);
    auto* row = makeRow(status, {}, 8);
    row->addWidget(m_spinner);
    row->addWidget(m_icon, 0, Qt::AlignTop);
    row->addWidget(m_status, 1);
    return status;
}

void UpdatePanel::takeFocus()
{
    m_check->setFocus();
}

void UpdatePanel::refresh()
{
    const std::optional<UpdateChecker::Result>& result = m_model.updates.result.value();
    enableCheck(!m_model.updates.isChecking);
    m_spinner->setVisible(m_model.updates.isChecking);
    m_download->setVisible(result && std::holds_alternative<UpdateRelease>(*result));
    if (result) {
        std::visit([this](const auto& found) { tell(found); }, *result);
        announce(*m_status);
    } else {
        say(tr("Folvane checks only when you ask. It reads one file on %1 and sends nothing about your Mac.")
                .arg(config::hostName),
            theme::secondaryText);
    }
}

// While it is off, the keyboard goes elsewhere.
void UpdatePanel::enableCheck(bool enabled)
{
    m_hadKeyboard = m_hadKeyboard || (!enabled && m_check->hasFocus());
    m_check->setEnabled(enabled);
    if (enabled && std::exchange(m_hadKeyboard, false))
        m_check->setFocus();
}

void UpdatePanel::tell(const UpdateRelease& release)
{
    say(tr("Version %1 is available.").arg(release.version), theme::text, Icon::Download);
}

void UpdatePanel::tell(const UpdateChecker::Failed& failure)
{
    say(failure.text, theme::danger);
}

void UpdatePanel::tell(const UpdateChecker::UpToDate&)
{
    say(tr("You have the latest version."), theme::success, Icon::CheckCircle);
}

void UpdatePanel::say(const QString& text, const QColor& color, std::optional<Icon> icon)
{
    m_status->setText(text);
    setTextColor(*m_status, color);
    m_icon->setVisible(icon.has_value());
    if (icon)
        m_icon->setPixmap(themedIcon(*icon, color).pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
}

void UpdatePanel::download()
{
    const std::optional<UpdateChecker::Result>& result = m_model.updates.result.value();
    const auto* release = result ? std::get_if<UpdateRelease>(&*result) : nullptr;
    if (release)
        openLink(m_model, release->downloadURL(m_model.updates.productPage()));
}

} // namespace folvane
