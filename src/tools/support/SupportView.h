#pragma once

#include "controls/sheets/SheetFrame.h"
#include "tools/support/DonationNetwork.h"

namespace folvane {

class SelectableText;

/// Where the developer can be thanked with coins.
class SupportView : public SheetFrame {
    Q_OBJECT

public:
    /// `afterResult`: it came by itself.
    explicit SupportView(bool afterResult, QWidget* parent = nullptr);

private:
    void addPicker();
    void addDetails();
    QWidget* makeField(const QString& title, QWidget* value);
    void addFooter(bool afterResult);
    void showNetwork(const DonationNetwork& network);
    void copyAddress();
    void showCopied(bool copied);

    DonationNetwork m_network = DonationNetwork::all().front();
    QLabel* m_picture;
    QLabel* m_coins;
    QLabel* m_networks;
    SelectableText* m_address;
    Button* m_copy;
};

} // namespace folvane
