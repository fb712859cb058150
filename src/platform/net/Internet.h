#pragma once
#include "platform/net/Endpoints.h"
#include "platform/net/Ftp.h"
#include "platform/net/Inet.h"
#include <memory>

namespace platform {

/// The way to the servers.
class Internet {
  public:
    virtual ~Internet() = default;
    virtual const Endpoints& endpoints() const = 0;
    virtual std::unique_ptr<Inet> inet() = 0;
    virtual std::unique_ptr<Ftp> ftp() = 0;
};

} // namespace platform
