#pragma once

#include "engine/OpenResult.h"
#include "engine/SendableImage.h"
#include "pdf/drawing/DrawingBudget.h"
#include "records/BuildPlan.h"
#include "records/PageItem.h"

#include <QByteArray>
#include <QList>
#include <QSizeF>
#include <QString>
#include <QUrl>

#include <memory>
#include <optional>
#include <stop_token>

namespace folvane {

/// Holds every source open and makes new PDFs and pictures from its pages. Synchronous, for one thread
/// at a time; only values cross its border. It never writes a file.
class Engine {
public:
    Engine();
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// Opens a PDF or a picture, by the name's ending alone. A document that is open already answers at once,
    /// whatever the password, also one without pages. Never throws: all failures are `Unreadable` or `NeedsPassword`.
    /// A picture is `Unreadable` soon after `stop` is asked for.
    OpenResult open(const QUrl& url, const std::optional<QString>& password = std::nullopt,
                    WhenChanged whenChanged = WhenChanged::KeepHeld, std::stop_token stop = {});
    /// Lets go of the document behind `url`.
    void forget(const QUrl& url);
    /// Lets go of the pictures that builds with a quality keep for the next one.
    void forgetPictures();

    /// Size in points of the page as shown after `turn`; 595 by 842 when the page is not there.
    QSizeF displaySize(const PageSource& source, int turn) const;
    /// The bytes of a new PDF. Throws EngineError, or Cancelled once `stop` is asked for.
    QByteArray build(const BuildPlan& plan, std::stop_token stop = {});
    /// The page on white, its long side `longSide` pixels; nothing when it cannot be found or drawn, or when stopped.
    /// A page that takes too long counts as one that cannot be drawn until its file is opened again.
    std::optional<SendableImage> image(const PageSource& source, int turn, double longSide,
                                       std::stop_token stop = {});

    struct Drawing {
        std::optional<SendableImage> picture;
        bool madeRoom = false; ///< it was cut short, for those who wait
    };
    /// The same, which makes room once it has gone on for a while and somebody waits.
    Drawing draw(const PageSource& source, int turn, double longSide, std::stop_token stop,
                 pdf::DrawingBudget::Waiting waiting);

    /// Every page as the bytes of a PNG, or of a JPEG at quality 0.85, at `dpi`, in order.
    /// Throws EngineError, or Cancelled.
    QList<QByteArray> pictures(const BuildPlan& plan, double dpi, bool jpeg, std::stop_token stop = {});

private:
    struct State;

    std::unique_ptr<State> m_state;
};

} // namespace folvane
