#pragma once
#include "platform/net/Ftp.h"
#include <memory>

namespace platform {

/// By libcurl, plain or with explicit TLS and the server's certificate checked.
class CurlFtp : public Ftp {
  public:
    struct Limits {
        long secondsToConnect = 30;
        /// A line that carries nothing for so long is dead.
        long secondsOfSilence = 30;
        /// A server that does not take its leave is left without.
        int millisecondsToQuit = 2000;
    };

    CurlFtp() : CurlFtp(Limits()) {}

    explicit CurlFtp(const Limits& limits);
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

    const Limits m_limits;
    bool m_busy = false;
    std::unique_ptr<Session> m_session;
};

} // namespace platform
