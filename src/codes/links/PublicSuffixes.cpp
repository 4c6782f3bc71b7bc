#include "codes/links/PublicSuffixes.h"
#include "codes/links/hostNames.h"

#include <QFile>

#include <algorithm>

namespace folvane {

namespace {

QByteArray carriedList()
{
    QFile file(QStringLiteral(":/public_suffix_list.dat"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString lastOf(const QList<QStringView>& labels, qsizetype count)
{
    QStringList last;
    for (const QStringView label : labels.last(std::min(count, labels.size())))
        last.append(label.toString());
    return last.join(u'.');
}

} // namespace

PublicSuffixes::PublicSuffixes(const QByteArray& list)
{
    const QString text = QString::fromUtf8(list);
    for (const QStringView line : QStringView(text).tokenize(u'\n', Qt::SkipEmptyParts)) {
        const QStringView rule = line.trimmed();
        if (rule.isEmpty() || rule.startsWith(QLatin1String("//")))
            continue;
        m_rules.insert(rule.toString().toLower());
        m_mostLabels = std::max(m_mostLabels, rule.count(u'.') + 1);
    }
}

const PublicSuffixes& PublicSuffixes::listed()
{
    static const PublicSuffixes suffixes(carriedList());
    return suffixes;
}

// From the longest ending to the shortest:
// 1. An exception, "!" and the ending, is itself registered, whatever other rules say.
// 2. A rule that is the ending makes it a suffix.
// 3. So does a wildcard: "*" in the place of its first label.
// 4. A last label that no rule knows is a suffix, too.
QString PublicSuffixes::registrableDomain(const QString& host) const
{
    const QList<QStringView> labels = labelsOf(host);
    if (labels.size() < 2 || m_rules.isEmpty())
        return host;
    qsizetype suffixLength = 1;
    for (qsizetype length = std::min(m_mostLabels, labels.size()); length > 0; --length) {
        const QString ending = lastOf(labels, length);
        if (m_rules.contains(u'!' + ending))
            return ending;
        const bool isSuffix =
            m_rules.contains(ending)
            || (length > 1 && m_rules.contains(QLatin1String("*.") + lastOf(labels, length - 1)));
        suffixLength = std::max(suffixLength, isSuffix ? length : 1);
    }
    return lastOf(labels, suffixLength + 1);
}

} // namespace folvane
