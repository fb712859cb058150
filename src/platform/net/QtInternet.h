#pragma once
#include "platform/net/Internet.h"

namespace platform {

/// The servers that `tavolino.ini` names, over the lines of this computer.
class QtInternet : public Internet {
  public:
    explicit QtInternet(Endpoints endpoints) : m_endpoints(std::move(endpoints)) {}

    const Endpoints& endpoints() const override { return m_endpoints; }

    std::unique_ptr<Inet> inet() override;
    std::unique_ptr<Ftp> ftp() override;

  private:
    Endpoints m_endpoints;
};

} // namespace platform
