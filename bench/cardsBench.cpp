// Measures how long the window takes for each turn of the wheel over the cards of 2,000 codes, until all is painted, and tells it as
// one JSON object in milliseconds:
//     folvane-cards-bench

#include "frameTimes.h"
#include "tellMeasured.h"

#include "controls/containers/LazyColumn.h"
#include "tour/waiting.h"

#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace {

using namespace folvane;

constexpr int cards = 2000;
constexpr int turns = 1000;
constexpr int notch = 120; // of a wheel

QList<FoundCode> manyCodes()
{
    const QStringList payloads{"https://secure-paypal.example.com/%1", "WIFI:T:WPA;S:Harbour %1;P:lanterns;;",
                               "BEGIN:VCARD\nVERSION:3.0\nFN:Number %1\nTEL:600000000\nEND:VCARD",
                               "Number %1", "http://192.168.0.1/%1"};
    QList<FoundCode> codes;
    for (int i = 0; i < cards; ++i)
        codes.append(
            {QUuid::createUuid(), payloads[i % payloads.size()].arg(i), CodeSymbology::Qr, "Poster.pdf", i});
    return codes;
}

void turnWheel(QWidget& window)
{
    const QPoint middle = window.rect().center();
    QWheelEvent turn(middle, window.mapToGlobal(middle), {}, {0, -notch}, Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&turn); // only those that a person makes reach what lies below
    qApp->notify(window.windowHandle(), &turn);
}

QJsonObject measure(const QStringList&)
{
    Stage stage;
    stage.model.destination = Destination(Destination::Place::Codes);
    stage.model.codes.found = manyCodes();
    waitUntilStill();
    const QJsonObject times = frameTimes(turns, [&stage](int) { turnWheel(stage.window); });
    const auto* column = stage.window.findChild<LazyColumn*>();
    if (column->verticalScrollBar()->value() < turns * 150)
        throw TourFailed("The cards did not move.");
    return times;
}

} // namespace

int main(int argc, char** argv)
{
    const auto fit = [](const QStringList& words) { return words.size() == 1; };
    return tellMeasured(argc, argv, "folvane-cards-bench", fit, measure);
}
