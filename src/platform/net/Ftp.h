#pragma once
#include <QString>
#include <functional>

namespace platform {

struct Endpoints;

/// What a transfer tells while it goes on, in the codes of the operating system's status call-back.
struct FtpStatus {
    enum Code : int {
        ResolvingName = 10,
        ConnectingToServer = 20,
        ConnectedToServer = 21,
        RequestSent = 31,
        ResponseReceived = 41,
        ClosingConnection = 50,
        ConnectionClosed = 51,
        DetectingProxy = 80,
        StateChange = 200,
    };

    int code = 0;
    /// Host or address.
    QString text{};
    /// With StateChange the state.
    qint64 bytes = 0;
};

/// A log-in at an FTP server and files sent over it: passive, binary, over one connection. Each call lasts
/// until it is done, with the event loop running meanwhile: screens paint, calls come in, and giveUp may be
/// called. Results are the operating system's error numbers (12001 to 12036, others beyond), 0 for done.
class Ftp {
  public:
    enum Error : int {
        kTimeout = 12002,
        kExtendedError = 12003, ///< the server's own words are in LastResponse
        kInternalError = 12004,
        kInvalidUrl = 12005,
        kNameNotResolved = 12007,
        kIncorrectUser = 12013,
        kIncorrectPassword = 12014,
        kLoginFailure = 12015,
        kCancelled = 12017,
        kIncorrectState = 12019,
        kCannotConnect = 12029,
        kConnectionAborted = 12030,
        kConnectionReset = 12031,
        kCertificateInvalid = 12045,
        kTlsRefused = 12157,
    };

    virtual ~Ftp() = default;
    /// Called in the caller's thread.
    std::function<void(const FtpStatus&)> onStatus;

    virtual int Connect(const Endpoints& server) = 0;
    virtual bool IsConnected() const = 0;
    /// `remotePath` is relative to the folder of the log-in. Its folders have to be there. Once the
    /// connection is lost each further file fails: nobody logs in anew.
    virtual int PutFile(const QString& localPath, const QString& remotePath) = 0;
    /// While something goes on: gives it up, no more.
    virtual void Close() = 0;
    /// What goes on ends soon with kCancelled, and so does all that follows until the next Connect.
    virtual void giveUp() = 0;
    /// The last line that the server sent, without its line end.
    virtual QString LastResponse() const = 0;
    /// What went wrong last, in technical words for the log; never holds the password.
    virtual QString Detail() const = 0;
};

} // namespace platform
