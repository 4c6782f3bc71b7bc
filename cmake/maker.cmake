# Constants of whoever publishes the program, collected in one generated header ("config.h").
# The defaults are under a reserved domain and reach nobody.

set(FOLVANE_APP_NAME "Folvane" CACHE STRING "Name of the program as people read it")
set(FOLVANE_MAKER_NAME "Merrowlight Apps" CACHE STRING "Who publishes it")
set(FOLVANE_BUILD_NUMBER 1 CACHE STRING "Whole number that grows with each published build")
set(FOLVANE_BUNDLE_IDENTIFIER "example.merrowlight.folvane" CACHE STRING "Reverse host name that preferences and desktop files go by")
set(FOLVANE_HOST_NAME "merrowlight.example" CACHE STRING "Host of the maker's site, of the version file and of updates")
set(FOLVANE_PRODUCT_PATH "/folvane-mac/" CACHE STRING "Path on that host, of the product's page and of the version file below it")
set(FOLVANE_SUPPORT_ADDRESS "support@merrowlight.example" CACHE STRING "Mail address for support")
set(FOLVANE_YOUTUBE_URL "https://youtube.merrowlight.example/" CACHE STRING "The maker's channel")
set(FOLVANE_TIKTOK_URL "https://tiktok.merrowlight.example/" CACHE STRING "The maker's account")
set(FOLVANE_TELEGRAM_URL "https://telegram.merrowlight.example/" CACHE STRING "The maker's channel")
set(FOLVANE_X_URL "https://x.merrowlight.example/" CACHE STRING "The developer's account")
# Whoever sends coins to these by mistake is refused by the wallet.
set(FOLVANE_EVM_ADDRESS "example-evm-address" CACHE STRING "Receiving address on Ethereum, Arbitrum and BNB Chain")
set(FOLVANE_TRON_ADDRESS "example-tron-address" CACHE STRING "Receiving address on Tron")
set(FOLVANE_SOLANA_ADDRESS "example-solana-address" CACHE STRING "Receiving address on Solana")
set(FOLVANE_TON_ADDRESS "example-ton-address" CACHE STRING "Receiving address on TON")
set(FOLVANE_BITCOIN_ADDRESS "example-bitcoin-address" CACHE STRING "Receiving address of Bitcoin")

if(NOT FOLVANE_BUILD_NUMBER MATCHES "^[0-9]+$")
    message(FATAL_ERROR "FOLVANE_BUILD_NUMBER is \"${FOLVANE_BUILD_NUMBER}\", but must be a whole number.")
endif()

configure_file(cmake/config.h.in "${CMAKE_BINARY_DIR}/generated/config.h" @ONLY)

add_library(folvane-config INTERFACE)
target_include_directories(folvane-config INTERFACE "${CMAKE_BINARY_DIR}/generated")
