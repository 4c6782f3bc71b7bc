#include "engine/outsideView.h"

#include "support/tools.h"

#include <QJsonArray>

namespace folvane {

namespace {

void appendBookmarks(QStringList& lines, const QJsonArray& items, int level)
{
    for (const QJsonValue& value : items) {
        const QJsonObject item = value.toObject();
        const QJsonValue page = item[QLatin1String("destpageposfrom1")];
        lines << QString(level, QLatin1Char(' ')) + item[QLatin1String("title")].toString() + QLatin1Char('@')
                     + (page.isDouble() ? QString::number(page.toInt()) : QStringLiteral("?"));
        appendBookmarks(lines, item[QLatin1String("kids")].toArray(), level + 1);
    }
}

QString withoutMark(const QJsonValue& text)
{
    return text.toString().mid(2); // "u:…" is text, "b:…" are bytes
}

} // namespace

OutsideView::OutsideView(const QString& path)
    : m_path(path), m_objects(qpdfJson(path, QStringLiteral("qpdf")).toArray().at(1).toObject())
{
}

QJsonValue OutsideView::resolved(const QJsonValue& value) const
{
    if (!value.isString() || !value.toString().endsWith(QLatin1String(" R")))
        return value;
    const QJsonObject object = m_objects[QLatin1String("obj:") + value.toString()].toObject();
    if (object.contains(QLatin1String("stream")))
        return object[QLatin1String("stream")].toObject()[QLatin1String("dict")];
    return object[QLatin1String("value")];
}

QJsonObject OutsideView::trailer() const
{
    return m_objects[QLatin1String("trailer")].toObject()[QLatin1String("value")].toObject();
}

QJsonObject OutsideView::catalogue() const
{
    return resolved(trailer()[QLatin1String("/Root")]).toObject();
}

QStringList OutsideView::catalogueKeys() const
{
    return catalogue().keys();
}

QStringList OutsideView::pageReferences() const
{
    QStringList references;
    for (const QJsonValue& page : qpdfJson(m_path, QStringLiteral("pages")).toArray())
        references << page.toObject()[QLatin1String("object")].toString();
    return references;
}

QJsonValue OutsideView::named(const QString& name) const
{
    const QJsonObject names = resolved(catalogue()[QLatin1String("/Names")]).toObject();
    const QJsonArray pairs =
        resolved(names[QLatin1String("/Dests")]).toObject()[QLatin1String("/Names")].toArray();
    for (int i = 0; i + 1 < pairs.size(); i += 2) {
        if (pairs[i].toString() == name)
            return resolved(pairs[i + 1]);
    }
    return {};
}

int OutsideView::pageOf(QJsonValue destination) const
{
    if (destination.isString())
        destination = named(destination.toString());
    return static_cast<int>(pageReferences().indexOf(destination.toArray().at(0).toString())) + 1;
}

QStringList OutsideView::links() const
{
    QStringList lines;
    const QStringList pages = pageReferences();
    for (int i = 0; i < pages.size(); ++i) {
        for (const QJsonValue& reference :
             resolved(resolved(pages[i]).toObject()[QLatin1String("/Annots")]).toArray()) {
            const QJsonObject annotation = resolved(reference).toObject();
            if (annotation[QLatin1String("/Subtype")] != QLatin1String("/Link"))
                continue;
            QJsonValue destination = resolved(annotation[QLatin1String("/Dest")]);
            if (destination.isNull() || destination.isUndefined())
                destination = resolved(annotation[QLatin1String("/A")]).toObject()[QLatin1String("/D")];
            const int target = pageOf(resolved(destination));
            lines << QString::number(i + 1) + QLatin1Char('>')
                         + (target > 0 ? QString::number(target) : QStringLiteral("?"));
        }
    }
    return lines;
}

QStringList OutsideView::bookmarks() const
{
    QStringList lines;
    appendBookmarks(lines, qpdfJson(m_path, QStringLiteral("outlines")).toArray(), 0);
    return lines;
}

QStringList OutsideView::fields() const
{
    QStringList lines;
    for (const QJsonValue& value :
         qpdfJson(m_path, QStringLiteral("acroform")).toObject()[QLatin1String("fields")].toArray()) {
        const QJsonObject field = value.toObject();
        lines << field[QLatin1String("fullname")].toString() + QLatin1Char('@')
                     + QString::number(field[QLatin1String("pageposfrom1")].toInt()) + QLatin1Char('=')
                     + withoutMark(field[QLatin1String("value")]);
    }
    lines.sort();
    return lines;
}

int OutsideView::pageObjects() const
{
    int count = 0;
    for (const QJsonValue& object : m_objects)
        count += object.toObject()[QLatin1String("value")].toObject()[QLatin1String("/Type")]
                 == QLatin1String("/Page");
    return count;
}

} // namespace folvane
