#include "controls/dragging/FileDrops.h"

#include "controls/dragging/droppedFiles.h"

namespace folvane {

DropTarget::Verdict FileDrops::judge(const QMimeData& data) const
{
    return droppedFiles(&data).isEmpty() ? Verdict::Leave : Verdict::Take;
}

void FileDrops::take(const QMimeData& data)
{
    emit dropped(droppedFiles(&data));
}

} // namespace folvane
