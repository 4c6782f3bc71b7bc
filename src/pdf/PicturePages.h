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

    struct Picture {
        QByteArray jpeg; ///< embedded as it is
        QSize pixels;
        int channels = 3; ///< 3 for RGB, 1 for grey
    };

    /// A page of that size that the picture fills.
    void add(const Picture& picture, QSizeF points);

    /// The finished file; an empty password means no protection. Throws Cancelled, and what the library throws.
    QByteArray written(const QString& password, std::stop_token stop);

private:
    struct Target;

    std::unique_ptr<Target> m_target;
};

} // namespace folvane::pdf
