#include "platform/line/KeepAlive.h"
#ifdef Q_OS_UNIX
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace platform {

void keepAlive(QAbstractSocket& socket) {
    socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
#ifdef TCP_KEEPIDLE
    // The system's own idle time is two hours.
    const auto set = [&](int option, int value) {
        ::setsockopt(int(socket.socketDescriptor()), IPPROTO_TCP, option, &value, sizeof value);
    };
    set(TCP_KEEPIDLE, 30);
    set(TCP_KEEPINTVL, 10);
    set(TCP_KEEPCNT, 3);
#endif
}

} // namespace platform
