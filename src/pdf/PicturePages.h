#pragma once

#include <QByteArray>
#include <QSize>
#include <QSizeF>
#include <QString>

#include <memory>
#include <stop_token>

namespace folvane::pdf {

/// A new document whose every page is one picture.
class PicturePages {
public:
    PicturePages();
    ~PicturePages();
    PicturePages(const PicturePages&) = delete;
    PicturePages& operator=(const PicturePages&) = delete;

    /// A page of that size that the picture fills. `jpeg` is embedded as it is, and must be RGB of that many pixels.
    void add(const QByteArray& jpeg, QSize pixels, QSizeF points);

    /// The finished file; an empty password means no protection. Throws Cancelled, and what the library throws.
    QByteArray written(const QString& password, std::stop_token stop);

private:
    struct Target;

    std::unique_ptr<Target> m_target;
};

} // namespace folvane::pdf
