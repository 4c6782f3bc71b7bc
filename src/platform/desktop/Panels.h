#pragma once

#include <QCoro/QCoroTask>

#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

namespace folvane {

/// Where to save one PDF.
struct SavePanel {
    QString name;               ///< suggested, with its ending
    std::optional<QUrl> folder; ///< where the panel starts
    bool operator==(const SavePanel&) const = default;
};

/// A folder for several files.
struct FolderPanel {
    std::optional<QUrl> folder; ///< where the panel starts
    QString prompt;             ///< label of the button that accepts
    bool operator==(const FolderPanel&) const = default;
};

enum class ContentType { Pdf, Image };

/// Files to open.
struct OpenPanel {
    bool multiple = false;
    QList<ContentType> types;
    QString message;
    bool operator==(const OpenPanel&) const = default;
};

/// The system's panels. They are modal to the window, and awaited; Cancel is nothing, an empty list, or
/// false.
class Panels {
public:
    virtual ~Panels();

    /// The URL as the user gave it: an ending is not added. Whether a file there may be replaced has been
    /// asked.
    virtual QCoro::Task<std::optional<QUrl>> chooseSave(SavePanel panel) = 0;
    virtual QCoro::Task<std::optional<QUrl>> chooseFolder(FolderPanel panel) = 0;
    virtual QCoro::Task<QList<QUrl>> chooseOpen(OpenPanel panel) = 0;
    /// Asked when an ending that was added to the chosen name leads to a file that exists. True: replace it.
    virtual QCoro::Task<bool> confirmReplace(QUrl existing) = 0;
};

} // namespace folvane
