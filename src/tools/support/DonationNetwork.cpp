#include "tools/support/DonationNetwork.h"

#include "config.h"

namespace folvane {

namespace {

constexpr qsizetype longestLine = 52;

} // namespace

const QList<DonationNetwork>& DonationNetwork::all()
{
    static const QList<DonationNetwork> networks{
        {"evm", "Ethereum & EVM", "Ethereum, Arbitrum, BNB Chain", "USDT, USDC, ETH, BNB",
         config::evmAddress.toString()},
        {"tron", "Tron", "Tron (TRC-20)", "USDT, TRX", config::tronAddress.toString()},
        {"solana", "Solana", "Solana", "USDT, USDC, SOL", config::solanaAddress.toString()},
        {"ton", "TON", "TON", "USDT, TON", config::tonAddress.toString()},
        {"btc", "Bitcoin", "Bitcoin", "BTC", config::bitcoinAddress.toString()}};
    return networks;
}

QString displayed(const QString& address)
{
    if (address.size() <= longestLine)
        return address;
    const qsizetype half = (address.size() + 1) / 2;
    return address.left(half) + QChar(QChar::LineSeparator) + address.mid(half);
}

} // namespace folvane
