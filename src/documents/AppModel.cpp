#include "documents/AppModel.h"

#include <algorithm>
#include <utility>

namespace folvane {

AppModel::AppModel(Services services, QObject* parent)
    : QObject(parent), m_services(services), m_thumbnails(services.engine)
{
    m_onMerge = merge.items.addNotifier([this] { followMerge(); });
}

AppModel::~AppModel()
{
    m_end.request_stop();
    m_toastTimer.request_stop();
    if (busy.value())
        busy.value()->task.request_stop();
    for (PasswordQuestion& question : std::exchange(m_questions, {}))
        question.answer.give(std::nullopt);
}

OpenFilePtr AppModel::file(const QUuid& id) const
{
    const QList<OpenFilePtr>& all = files.value();
    const auto found = std::ranges::find_if(all, [&id](const OpenFilePtr& one) { return one->id == id; });
    return found == all.end() ? nullptr : *found;
}

} // namespace folvane
