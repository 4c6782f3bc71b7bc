#include "support/madePdf.h"

namespace folvane {

namespace {

constexpr int firstPage = 3; // behind the catalogue and the page tree

QByteArray reference(qsizetype object)
{
    return QByteArray::number(object) + " 0 R";
}

} // namespace

QByteArray pdfOfObjects(const QList<QByteArray>& objects, const QByteArray& trailer)
{
    QByteArray file = "%PDF-1.7\n";
    QByteArray table = "0000000000 65535 f \n";
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(objects.size() + 1);
    const QByteArray start = QByteArray::number(file.size());
    return file + "xref\n0 " + count + "\n" + table + "trailer\n<< /Size " + count + " /Root 1 0 R " + trailer
           + " >>\nstartxref\n" + start + "\n%%EOF\n";
}

QByteArray pdfStream(const QByteArray& entries, const QByteArray& data)
{
    return "<< " + entries + " /Length " + QByteArray::number(data.size()) + " >>\nstream\n" + data
           + "\nendstream";
}

QByteArray pdfOfPages(const QList<MadePage>& pages, const QByteArray& catalogue,
                      const QList<QByteArray>& more, const QByteArray& trailer)
{
    QByteArray kids;
    QList<QByteArray> dictionaries, contents;
    for (qsizetype i = 0; i < pages.size(); ++i) {
        kids += reference(firstPage + i) + " ";
        dictionaries << "<< /Type /Page /Parent 2 0 R /Contents " + reference(firstPage + pages.size() + i)
                            + " " + pages[i].entries + " >>";
        contents << pdfStream({}, pages[i].content);
    }
    const QByteArray tree = "<< /Type /Pages /Kids [" + kids + "] /Count " + QByteArray::number(pages.size())
                            + " /MediaBox [0 0 600 800] /Resources << /Font << /F1 << /Type /Font /Subtype "
                              "/Type1 /BaseFont /Helvetica >> >> >> >>";
    return pdfOfObjects(QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R " + catalogue + " >>", tree}
                            + dictionaries + contents + more,
                        trailer);
}

QByteArray shownText(const QByteArray& words)
{
    return "BT /F1 24 Tf 72 700 Td (" + words + ") Tj ET";
}

QByteArray numberedPdf(const QByteArray& name, int pages)
{
    QList<MadePage> all;
    for (int page = 1; page <= pages; ++page)
        all << MadePage{shownText(name + '-' + QByteArray::number(page))};
    return pdfOfPages(all);
}

} // namespace folvane
