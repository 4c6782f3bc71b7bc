#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

namespace folvane {

/// What qpdf tells of a file, in short lines that tests can compare.
class OutsideView {
public:
    explicit OutsideView(const QString& path);

    /// "1>2": a link on page 1 to page 2 (1-based); "?" for a target that is no page.
    QStringList links() const;
    /// "Title@page", nested ones indented by a space a level.
    QStringList bookmarks() const;
    /// "full.name@page=value", one a widget.
    QStringList fields() const;
    /// The catalogue's keys.
    QStringList catalogueKeys() const;
    QJsonObject catalogue() const;
    QJsonObject trailer() const;
    /// The object that a reference ("7 0 R") or a direct value stands for.
    QJsonValue resolved(const QJsonValue& value) const;
    /// How many objects are pages.
    int pageObjects() const;

private:
    int pageOf(QJsonValue destination) const;
    QJsonValue named(const QString& name) const;
    QStringList pageReferences() const;

    QString m_path;
    QJsonObject m_objects; ///< "obj:7 0 R" to what stands there
};

} // namespace folvane
