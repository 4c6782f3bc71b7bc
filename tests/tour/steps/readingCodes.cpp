#include "support/drawnCode.h"
#include "tour/steps.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>

namespace folvane {

namespace {

using Kind = CodeSymbology;

/// A web address, a network and a product, one below the other.
QImage poster()
{
    QImage image(700, 1000, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.drawImage(60, 60, drawnCode("QRCODE", "https://www.example.org/harbour?from=poster"));
    painter.drawImage(60, 360, drawnCode("QRCODE", "WIFI:T:WPA;S:Copper Harbour;P:seven lanterns;;"));
    painter.drawImage(60, 700, drawnCode("EANX", "401234567890"));
    return image;
}

qsizetype found(Tour& tour)
{
    return tour.model.codes.found.value().size();
}

void untilRead(Tour& tour)
{
    waitUntil("The codes", [&tour] { return !tour.model.codes.isReading.value(); });
}

QPoint middle(Tour& tour)
{
    return tour.window.mapToGlobal(tour.window.rect().center());
}

void show(Tour& tour, const QStringList& payloads, const QString& origin = "Poster.png", Kind kind = Kind::Qr)
{
    QList<FoundCode> codes;
    for (const QString& payload : payloads)
        codes.append({QUuid::createUuid(), payload, kind, origin, std::nullopt});
    tour.model.codes.found = codes;
}

} // namespace

void showReadingCodes(Tour& tour)
{
    tour.press("QR Codes", "codes-empty");
    QGuiApplication::clipboard()->clear();
    tour.press("Paste", "codes-nothing-to-paste");
    tour.press("OK");

    poster().save(tour.path("Poster.png"));
    const QUrl picture = QUrl::fromLocalFile(tour.path("Poster.png"));
    tour.hand.dragFiles({picture}, middle(tour), [&tour] { tour.picture("codes-file-over"); });
    untilRead(tour);
    tour.picture("codes-found");
    Tour::check(found(tour) == 3 && tour.model.files.value().isEmpty(), "three codes, and no document");
    tour.press("Open in Browser");
    Tour::check(tour.workspace.openedLinks.size() == 1, "the link went to the browser");
    tour.press("Copy Password", "codes-copied");
    Tour::check(QGuiApplication::clipboard()->text() == "seven lanterns", "the password is on the clipboard");
    tour.letToastGo();

    QGuiApplication::clipboard()->setImage(poster());
    tour.hand.key(Qt::Key_V, Qt::ControlModifier);
    untilRead(tour);
    tour.picture("codes-pasted");
    Tour::check(found(tour) == 6, "what was pasted stands before what was there");

    tour.panels.openAnswers.enqueue({tour.sample("Report.pdf", 200)});
    tour.press("Open…");
    tour.movingPicture("codes-reading");
    tour.press("Stop");
    untilRead(tour);
    Tour::check(!tour.model.codes.emptyMessage.value(), "a stopped read says nothing");
    tour.panels.openAnswers.enqueue({tour.sample("Letter.pdf", 1)});
    tour.press("Open…");
    untilRead(tour);
    tour.picture("codes-none");
    tour.press("Clear", "codes-cleared");
    Tour::check(found(tour) == 0, "the list is empty");
}

void showCodeCards(Tour& tour)
{
    tour.press("QR Codes");
    show(tour, {"https://example.org", "WIFI:S:Open Harbour;;",
                "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ada Harbour\r\nEND:VCARD",
                "BEGIN:VEVENT\nSUMMARY:Lanterns\nDTSTART:20261224T180000Z\nEND:VEVENT", "tel:+34600000000",
                "SMSTO:600000000:Hello", "mailto:harbour@example.org", "geo:40.4,-3.7", "Lanterns at eight"});
    tour.keys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab}, "cards-kinds");
    tour.keys({Qt::Key_PageDown}, "cards-kinds-below");
    tour.keys({Qt::Key_End}, "cards-kinds-end");
    show(tour, {"9783161484100"}, "Book.jpg", Kind::Ean13);
    tour.picture("cards-book");
    show(tour, {"http://192.168.0.1/", "https://paypal@evil.example/", "https://xn--bcher-kva.example/a",
                "https://p\u0430ypal.example", "https://bit.ly/3abc", "https://paypa1.example/login",
                "https://secure-paypal.example.com",
                "https://paypal." + QString("lantern-").repeated(7) + "harbour."
                    + QString("copper").repeated(10) + ".example",
                "http://paypal@bit.ly:8080/" + QString("a/").repeated(60)});
    tour.picture("cards-warnings");
    tour.keys({Qt::Key_End}, "cards-warnings-end");
    show(tour,
         {QStringLiteral("user\u202Egnp.exe\u0007 and\u200B hidden"),
          QStringLiteral("https://\u05d0\u05d1.\u05d2\u05d3.example/\u202Emoc.lapyap"),
          QStringLiteral("\u0645\u0631\u062d\u0628\u0627 \u0628\u0643\u0645"),
          QString("0123456789").repeated(250)},
         QString("A very long name of a picture ").repeated(8) + ".png");
    tour.picture("cards-strange");
    QStringList many;
    for (int n = 1; n <= 2000; ++n)
        many.append(QStringLiteral("Number %1%2").arg(n).arg(QString("\nline").repeated(n % 7)));
    show(tour, many);
    tour.keys({Qt::Key_End}, "cards-many-end");
    tour.resize(tour.window.minimumSize());
    tour.picture("cards-many-narrow");
    tour.hand.tabTo("Clear");
    tour.keys({Qt::Key_Space}, "cards-cleared-by-keys");
    Tour::check(found(tour) == 0, "all cards have gone");
}

} // namespace folvane
