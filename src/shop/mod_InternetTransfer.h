#pragma once
#include "platform/Services.h"
#include "platform/net/Ftp.h"
#include <QString>
#include <memory>

namespace shop {
class TransferView;
}

/// The way of pictures and catalogue to the web shop's server.
namespace mod_InternetTransfer {

/// Text of an error number of platform::Ftp; `lastResponse` is what the server said last.
QString GetInternetErrorText(int code, const QString& lastResponse = {});
/// With a closing "\".
QString QualifyPath(const QString& path);
/// Up to the first character of code 0.
QString TrimNull(const QString& text);
/// The line of the connection's log; "" for a status without one.
QString StatusLine(const platform::FtpStatus& status);

/// One run of the sequence: log-in, upload, log-off. The event loop runs meanwhile, so that calls come in,
/// screens paint and the run can be given up; the three stages follow each other whatever became of the one
/// before.
class Transfer {
  public:
    struct Choice {
        bool pictures = true;
        bool database = true;
    };

    /// Both outlive it.
    Transfer(const platform::Services& services, shop::TransferView& view);

    void ConnectToFTP();
    /// Does nothing without a connection.
    void UploadFiles(const Choice& choice);
    void DisconnectFTP();
    /// False without a connection and when the file did not arrive.
    bool FtpUploadFile(const QString& remotePath, const QString& localPath);

    /// What goes on ends soon, and nothing more is sent. The pictures that were under way stay marked for the
    /// next run.
    void giveUp();

    /// How it went, in a sentence for the user.
    QString outcome() const;

  private:
    struct PictureKind;

    void showStatus(const platform::FtpStatus& status);
    void uploadPictures();
    void uploadMarked(const PictureKind& kind);
    void uploadBackground();
    void uploadDatabase();
    void uploadPicture(const PictureKind& kind, const QString& name);
    void showFolder(const PictureKind& kind);
    void emptyLabels();
    void noteFailure(int code, const QString& what);

    platform::Services m_services;
    shop::TransferView& m_view;
    std::unique_ptr<platform::Ftp> m_ftp;
    int m_picturesDone = 0;
    /// Of the file whose way the bar shows; 0 for none.
    qint64 m_fileSize = 0, m_fileSent = 0;
    int m_loginResult = 0;
    int m_failedFiles = 0;
    bool m_givenUp = false;
    QString m_shopProblem;
};

} // namespace mod_InternetTransfer
