#pragma once

#include <QList>
#include <QString>

namespace folvane {

/// Where coins can be sent to the developer.
struct DonationNetwork {
    QString id;
    QString title;
    QString networks;
    QString coins;
    QString address;

    bool operator==(const DonationNetwork&) const = default;

    /// In the order in which they are offered.
    static const QList<DonationNetwork>& all();
};

/// The address in one line, or in two equal ones where it would be too long for that.
QString displayed(const QString& address);

} // namespace folvane
