#include "documents/AppModel.h"
#include "platform/texts/localeTexts.h"

#include <algorithm>

namespace folvane {

void AppModel::requestClose(OpenFilePtr file)
{
    if (file->isEdited)
        closingFile = file;
    else
        close(file);
}

void AppModel::close(OpenFilePtr file)
{
    Qt::beginPropertyUpdateGroup(); // nobody sees the place of a document that has gone
    closingFile = nullptr;
    QList<OpenFilePtr> rest = files;
    rest.removeIf([&file](const OpenFilePtr& one) { return one->id == file->id; });
    files = rest;
    if (sheet.value() && sheet.value()->fileID == file->id)
        sheet = std::nullopt;
    if (signingFileID.value() == file->id)
        signingFileID = std::nullopt;
    if (destination.value() == Destination::file(file->id))
        destination = rest.isEmpty() ? Destination() : Destination::file(rest.last()->id);
    Qt::endPropertyUpdateGroup();
    m_sources->releaseUnused();
}

std::optional<QuitQuestion> AppModel::quitQuestion() const
{
    QStringList names;
    for (const OpenFilePtr& file : files.value())
        if (file->isEdited)
            names.append(file->name);
    if (names.isEmpty())
        return std::nullopt;
    return QuitQuestion{tr("Quit without saving?"),
                        tr("Changes in %1 aren't saved. Use Save As… to keep them.").arg(joinedNames(names)),
                        names};
}

bool AppModel::quitsWithLastWindow() const
{
    return std::ranges::none_of(files.value(),
                                [](const OpenFilePtr& file) { return file->isEdited.value(); });
}

} // namespace folvane
