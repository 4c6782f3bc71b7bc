#include "tools/support/SupportSheets.h"

#include "tools/support/SupportView.h"
#include "tools/support/TellAFriendView.h"

#include <QApplication>

namespace folvane {

namespace {

QDialog* makeSheet(SupportPrompt prompt, AppModel& model, QWidget* window)
{
    switch (prompt) {
    case SupportPrompt::Manual: return new SupportView(false, window);
    case SupportPrompt::AfterFirstResult: return new SupportView(true, window);
    case SupportPrompt::TellAFriend: return new TellAFriendView(model, model.updates.productPage(), window);
    }
    Q_UNREACHABLE();
}

} // namespace

SupportSheets::SupportSheets(AppModel& model, QWidget* window)
    : QObject(window), m_model(model), m_window(window)
{
    m_watches.keep([this] { show(); }, model.support);
}

SupportSheets::~SupportSheets() = default;

void SupportSheets::show()
{
    const std::optional<SupportPrompt> prompt = m_model.support.value();
    if (!prompt || m_dialog)
        return;
    const bool isInTheWay = QApplication::activeModalWidget() || QApplication::activePopupWidget()
                            || !m_window->isVisible() || m_window->isMinimized();
    if (*prompt != SupportPrompt::Manual && isInTheWay) {
        m_model.support = std::nullopt;
        return;
    }
    m_dialog = makeSheet(*prompt, m_model, m_window);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_dialog, &QDialog::finished, this, [this] {
        m_dialog = nullptr;
        m_model.support = std::nullopt;
    });
    m_dialog->open();
}

} // namespace folvane
