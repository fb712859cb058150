#pragma once
#include "platform/net/Ftp.h"
#include <memory>

namespace platform {

/// By libcurl, plain or with explicit TLS and the server's certificate checked.
class CurlFtp : public Ftp {
  public:
    CurlFtp();
    ~CurlFtp() override;

    int Connect(const Endpoints& server) override;
    bool IsConnected() const override;
    int PutFile(const QString& localPath, const QString& remotePath) override;
    void Close() override;
    void giveUp() override;
    QString LastResponse() const override;
    QString Detail() const override;

  private:
    struct Session;
    int beside(const std::function<int()>& work);

    std::unique_ptr<Session> m_session;
};

} // namespace platform
