#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

namespace folvane {

/// The endings below which anyone can register a name: "com", "co.uk", "github.io".
class PublicSuffixes {
public:
    /// Of a list in its published form.
    explicit PublicSuffixes(const QByteArray& list);

    /// The list that the program carries, read once.
    static const PublicSuffixes& listed();

    /// What somebody has registered: the longest ending that the rules know, and one label more. The whole host when there
    /// is no more, or when there are no rules.
    QString registrableDomain(const QString& host) const;

private:
    QSet<QString> m_rules;      ///< as they stand in the list, in lower case
    qsizetype m_mostLabels = 0; ///< of any rule, so that no longer ending is looked up
};

} // namespace folvane
