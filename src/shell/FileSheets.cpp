#include "shell/FileSheets.h"

#include "shell/discard.h"
#include "tools/compress/CompressSheet.h"
#include "tools/exportImages/ExportImagesSheet.h"
#include "tools/protect/PasswordSheet.h"
#include "tools/split/SplitSheet.h"

namespace folvane {

namespace {

QDialog* makeSheet(FileSheet::Kind kind, AppModel& model, const OpenFilePtr& file, QWidget* window)
{
    switch (kind) {
    case FileSheet::Kind::Compress: return new CompressSheet(model, file, window);
    case FileSheet::Kind::Split: return new SplitSheet(model, file, window);
    case FileSheet::Kind::Password: return new PasswordSheet(model, file, window);
    case FileSheet::Kind::ExportImages: return new ExportImagesSheet(model, file, window);
    }
    Q_UNREACHABLE();
}

} // namespace

FileSheets::FileSheets(AppModel& model, QWidget* window) : QObject(window), m_model(model), m_window(window)
{
    m_watches.keep([this] { show(); }, m_model.sheet); // which goes with its document
}

FileSheets::~FileSheets() = default;

void FileSheets::show()
{
    const std::optional<FileSheet> sheet = m_model.sheet.value();
    const OpenFilePtr file = sheet ? m_model.file(sheet->fileID) : nullptr;
    const std::optional<FileSheet> wanted = file ? sheet : std::nullopt;
    if (wanted == m_shown)
        return;
    discard(m_dialog.data(), this);
    m_shown = wanted;
    m_dialog = wanted ? makeSheet(wanted->kind, m_model, file, m_window) : nullptr;
    if (!m_dialog)
        return;
    connect(m_dialog, &QDialog::finished, this, [this] { m_model.sheet = std::nullopt; });
    m_dialog->open();
}

} // namespace folvane
