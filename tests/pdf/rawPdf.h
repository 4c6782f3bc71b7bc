#pragma once

#include <QByteArray>
#include <QList>

namespace folvane::pdf {

/// A document written by hand: object n is the n-th text, the first is the catalogue.
inline QByteArray rawPdf(const QList<QByteArray>& objects)
{
    QByteArray file = "%PDF-1.7\n";
    QByteArray table = "0000000000 65535 f \n";
    for (int i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(objects.size() + 1);
    const QByteArray start = QByteArray::number(file.size());
    return file + "xref\n0 " + count + "\n" + table + "trailer\n<< /Size " + count
           + " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
}

inline QByteArray rawStream(const QByteArray& dictionaryEntries, const QByteArray& data)
{
    return "<< " + dictionaryEntries + " /Length " + QByteArray::number(data.size()) + " >>\nstream\n" + data
           + "\nendstream";
}

} // namespace folvane::pdf
