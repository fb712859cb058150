#include "platform/net/QtInternet.h"
#include "platform/net/CurlFtp.h"
#include "platform/net/QtInet.h"

namespace platform {

std::unique_ptr<Inet> QtInternet::inet() {
    return std::make_unique<QtInet>(endpoints().certificate);
}

std::unique_ptr<Ftp> QtInternet::ftp() {
    return std::make_unique<CurlFtp>();
}

} // namespace platform
