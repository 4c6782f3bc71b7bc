#pragma once

#include <QByteArray>
#include <QList>

namespace folvane {

/// A document written by hand: object n is the n-th text, the first is the catalogue. `trailer` adds entries there.
QByteArray pdfOfObjects(const QList<QByteArray>& objects, const QByteArray& trailer = {});
/// The text of a stream object: `entries` stand in its dictionary, beside the length.
QByteArray pdfStream(const QByteArray& entries, const QByteArray& data);

struct MadePage {
    QByteArray content;      ///< operators; /F1 is Helvetica
    QByteArray entries = {}; ///< of its dictionary; 600 by 800 points and the font are inherited
};

/// A document of pages: object 1 is the catalogue, 2 the page tree, from 3 on stand the pages, then their contents in
/// the same order, then `more`. `catalogue` and `trailer` add entries there.
QByteArray pdfOfPages(const QList<MadePage>& pages, const QByteArray& catalogue = {},
                      const QList<QByteArray>& more = {}, const QByteArray& trailer = {});
/// Operators that show a line of text near the top of a page.
QByteArray shownText(const QByteArray& words);
/// Pages that say "name-1", "name-2" and so on.
QByteArray numberedPdf(const QByteArray& name, int pages);

} // namespace folvane
