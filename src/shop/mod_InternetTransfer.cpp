#include "shop/mod_InternetTransfer.h"
#include "platform/net/Endpoints.h"
#include "platform/net/Internet.h"
#include "platform/net/PostURL.h"
#include "shop/TransferView.h"
#include "shop/modOnlineShopDB.h"
#include "store/ConnectionString.h"
#include "store/StoreGlobals.h"
#include <QDateTime>
#include <QFileInfo>

using platform::Ftp;
using platform::FtpStatus;
using store::OpenRecordset;
using namespace Qt::StringLiterals;

namespace mod_InternetTransfer {
namespace {

constexpr int kBarEnd = 100;

constexpr int kFirstError = 12001;
// Long ones go over two lines: NOLINTBEGIN(bugprone-suspicious-missing-comma)
const char* const kErrorTexts[] = {
    "No more handles could be generated at this time",
    "The request has timed out.",
    "Extended error returned from server.",
    "An internal error has occurred.",
    "URL is invalid.",
    "URL scheme could not be recognized, or is not supported.",
    "Server name could not be resolved.",
    "Requested protocol could not be located.",
    "A request to InternetQueryOption or InternetSetOption specified an invalid option value.",
    "Length of an option supplied to InternetQueryOption or InternetSetOption is incorrect for the type of "
    "option specified.",
    "The request option can not be set, only queried. ",
    "The Win32 Internet support is being shutdown or unloaded.",
    "Request to connect and login to an FTP server could notbe completed because the supplied user name is "
    "incorrect.",
    "Request to connect and login to an FTP server could not be completed because the supplied password is "
    "incorrect. ",
    "Request to connect to and login to an FTP server failed.",
    "Requested operation is invalid. ",
    "Operation was canceled, usually because the handle on which the request was operating was closed before "
    "the operation completed.",
    "Type of handle supplied is incorrect for this operation.",
    "Requested operation can not be carried out because the handle supplied is not in the correct state.",
    "Request can not be made via a proxy.",
    "A required registry value could not be located. ",
    "A required registry value was located but is an incorrect type or has an invalid value.",
    "Direct network access cannot be made at this time. ",
    "An asynchronous request could not be made because a zero context value was supplied.",
    "An asynchronous request could not be made because a callback function has not been set.",
    "The required operation could not be completed because one or more requests are pending.",
    "The format of the request is invalid.",
    "The requested item could not be located.",
    "The attempt to connect to the server failed.",
    "The connection with the server has been terminated.",
    "The connection with the server has been reset.",
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    "The request failed because the handle already exists.",
};

// NOLINTEND(bugprone-suspicious-missing-comma)

/// Why the log-in failed, as far as the user can do something about it.
QString loginProblem(int code) {
    switch (code) {
    case Ftp::kTimeout:
        return u"der Server antwortet nicht"_s;
    case Ftp::kNameNotResolved:
        return u"der Name des Servers wird nicht gefunden"_s;
    case Ftp::kIncorrectUser:
    case Ftp::kIncorrectPassword:
    case Ftp::kLoginFailure:
        return u"der Server weist Benutzer oder Passwort ab"_s;
    case Ftp::kCannotConnect:
        return u"der Server ist nicht erreichbar"_s;
    case Ftp::kCertificateInvalid:
        return u"dem Zertifikat des Servers ist nicht zu trauen"_s;
    case Ftp::kTlsRefused:
        return u"der Server verschlüsselt nicht"_s;
    default:
        return u"Fehler %1"_s.arg(code);
    }
}

QString stateLine(qint64 state) {
    constexpr qint64 kDisconnected = 2, kDisconnectedByUser = 16;
    if (state == kDisconnected)
        return u"Disconnected from network."_s;
    return state == kDisconnectedByUser ? u"Disconnected by user request."_s : QString();
}

/// A folder of this program.
QString localFolder(const QString& name) {
    return QualifyPath(store::appPath() + name);
}

const QString kWithPictures = u" WHERE flag_InternetBilder = True"_s;
const QString kNotDeleted = u" AND flag_Status <> True"_s;

/// A product's picture that goes up, and when its file was written.
struct Picture {
    QString name;
    qint64 product;
    QDateTime written;
};

} // namespace

struct Transfer::PictureKind {
    QString localFolder, remoteFolder;
    QString column = {}, flag = {};

    QString file(const QString& name) const {
        return store::nativePath(mod_InternetTransfer::localFolder(localFolder) + name);
    }

    QDateTime written(const QString& name) const { return QFileInfo(file(name)).lastModified(); }

    QString marked() const { return kWithPictures + u" AND "_s + flag + u" = 1"_s + kNotDeleted; }

    std::vector<Picture> pictures() const {
        std::vector<Picture> all;
        OpenRecordset rows(RsMain,
                           u"SELECT lng_ID, "_s + column + u" FROM tbl_Verwaltung_Produkte"_s + marked() +
                               u" ORDER BY lng_ID"_s,
                           ConnMain);
        for (; !rows->Eof(); rows->MoveNext()) {
            const QString name = rows->Fields(column).text();
            all.push_back({name, rows->Fields(u"lng_ID").toLong(), written(name)});
        }
        return all;
    }

    int count() const {
        OpenRecordset rows(RsMain, u"SELECT Count(*) AS TotPics FROM tbl_Verwaltung_Produkte"_s + marked(),
                           ConnMain);
        return int(rows->Fields(u"TotPics").toLong());
    }

    /// Of all that were to be sent, also where the file was missing or did not arrive. What the user has put
    /// in place of a sent one meanwhile stays marked.
    void unmark(const std::vector<Picture>& sent) const {
        QStringList keys;
        for (const Picture& picture : sent)
            if (written(picture.name) == picture.written)
                keys << QString::number(picture.product);
        if (!keys.isEmpty())
            ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET "_s + flag + u" = 0"_s + kWithPictures +
                             kNotDeleted + u" AND lng_ID IN ("_s + keys.join(u',') + u')');
    }
};

QString GetInternetErrorText(int code, const QString& lastResponse) {
    constexpr qsizetype kBuffer = 256;
    const int at = code - kFirstError;
    if (at < 0 || at >= int(std::size(kErrorTexts)) || !kErrorTexts[at])
        return u"Error details not available."_s;
    if (code == Ftp::kExtendedError && !lastResponse.isEmpty())
        return TrimNull(lastResponse.left(kBuffer));
    return QString::fromLatin1(kErrorTexts[at]);
}

QString QualifyPath(const QString& path) {
    return path.endsWith(u'\\') ? path : path + u'\\';
}

QString TrimNull(const QString& text) {
    return text.left(text.indexOf(QChar(u'\0')));
}

QString StatusLine(const FtpStatus& status) {
    switch (status.code) {
    case 0:
        return u"Looking up the IP address for "_s + status.text;
    case 1:
        return u"Name resolved "_s + status.text;
    case FtpStatus::ResolvingName: // the firm's table knows this code as another one's
        return u"HTTP request redirected to "_s + status.text;
    case FtpStatus::ConnectingToServer:
        return u"Connecting to server..."_s + status.text;
    case FtpStatus::ConnectedToServer:
        return u"Connected to "_s + status.text;
    case FtpStatus::ClosingConnection:
        return u"Closing connection"_s;
    case FtpStatus::ConnectionClosed:
        return u"Connection closed"_s;
    case FtpStatus::DetectingProxy:
        return u"Detecting proxy"_s;
    case FtpStatus::StateChange:
        return stateLine(status.bytes);
    default:
        return {};
    }
}

Transfer::Transfer(const platform::Services& services, shop::TransferView& view) :
    m_services(services), m_view(view), m_ftp(services.internet.ftp()) {
    m_ftp->onStatus = [this](const FtpStatus& status) { showStatus(status); };
}

void Transfer::showStatus(const FtpStatus& status) {
    if (status.code == FtpStatus::RequestSent && m_fileSize > 0) {
        m_fileSent += status.bytes;
        m_view.setProgress(int(kBarEnd * qMin(m_fileSent, m_fileSize) / m_fileSize));
    } else if (const QString line = StatusLine(status); !line.isEmpty()) {
        m_view.addStatusMsg(line);
    }
}

void Transfer::ConnectToFTP() {
    m_view.setStatus(u"Internet anmelden...."_s);
    m_view.setProgress(0);
    m_view.setWaiting(true);
    m_loginResult = m_ftp->Connect(m_services.internet.endpoints());
    m_view.setWaiting(false);
    if (m_loginResult != 0) {
        m_view.setStatus(GetInternetErrorText(m_loginResult, m_ftp->LastResponse()));
        noteFailure(m_loginResult, u"log-in"_s);
    }
    // Also behind a log-in that failed.
    m_view.setStatus(u"Internet angemeldet...."_s);
    m_view.setProgress(kBarEnd);
}

void Transfer::UploadFiles(const Choice& choice) {
    if (!m_ftp->IsConnected())
        return;
    if (choice.pictures)
        uploadPictures();
    if (choice.database && !m_givenUp)
        uploadDatabase();
    // The server would take half a catalogue over.
    if (m_givenUp)
        return;
    platform::PostURL(m_services,
                      m_services.internet.endpoints().script(u"TavolinoShopDataTransferAccessToSQL.asp"_s),
                      &m_shopProblem);
    m_view.showProgressBar(false);
    m_view.setDateiTyp(u"Upload beendet."_s);
}

void Transfer::uploadPictures() {
    const PictureKind large{u"\\Internet\\Pictures_Large\\"_s, u"ProduktPics/Large/"_s, u"txt_BildGross"_s,
                            u"flag_UpdatedPicLarge"_s};
    const PictureKind small{u"\\Internet\\Pictures_Small\\"_s, u"ProduktPics/Small/"_s, u"txt_BildKlein"_s,
                            u"flag_UpdatedPicSmall"_s};
    m_picturesDone = 0;
    if (const int total = small.count() + large.count(); total > 0)
        m_view.setProgressMaximum(total);
    m_view.showProgressBar(true);
    uploadMarked(large);
    uploadMarked(small);
    uploadBackground();
    m_view.setProgressMaximum(kBarEnd);
}

void Transfer::uploadMarked(const PictureKind& kind) {
    if (m_givenUp)
        return;
    showFolder(kind);
    const std::vector<Picture> pictures = kind.pictures();
    for (const Picture& picture : pictures) {
        uploadPicture(kind, picture.name);
        if (m_givenUp)
            return;
        m_view.setProgress(++m_picturesDone);
    }
    emptyLabels();
    kind.unmark(pictures);
}

void Transfer::uploadBackground() {
    if (m_givenUp)
        return;
    const PictureKind kind{u"\\Internet\\"_s, u"Pictures/"_s};
    showFolder(kind);
    QStringList names;
    {
        OpenRecordset rows(
            RsMain, u"SELECT txt_Hintergrundbild FROM tbl_OnlineShop_CorporateIdentity WHERE lng_ID = 1"_s,
            ConnMain);
        for (; !rows->Eof(); rows->MoveNext())
            names << rows->Fields(u"txt_Hintergrundbild").text();
    }
    for (const QString& name : std::as_const(names)) {
        uploadPicture(kind, name);
        ++m_picturesDone;
    }
    emptyLabels();
}

void Transfer::showFolder(const PictureKind& kind) {
    m_view.setDateiTyp(u"Bilder uploading..."_s);
    m_view.setDateiVerzeichnis(kind.remoteFolder);
}

void Transfer::uploadPicture(const PictureKind& kind, const QString& name) {
    if (!QFileInfo(kind.file(name)).isFile())
        return;
    m_view.setDateiName(name);
    FtpUploadFile(m_services.internet.endpoints().strWebShopPfad + kind.remoteFolder + name, kind.file(name));
}

void Transfer::uploadDatabase() {
    m_view.setProgress(0);
    m_view.setDateiTyp(u"Database uploading..."_s);
    const QString file = modOnlineShopDB::DatabaseFile();
    if (QFileInfo::exists(file)) {
        m_view.setDateiName(u"DBOnlineShop.mdb"_s);
        m_fileSent = 0;
        m_fileSize = QFileInfo(file).size();
        // Under a script's name, so that nobody downloads it.
        FtpUploadFile(m_services.internet.endpoints().strWebShopPfad + u"TavolinoShopDB.asp"_s, file);
        m_fileSize = 0;
    }
    emptyLabels();
    m_view.setProgress(kBarEnd);
}

void Transfer::emptyLabels() {
    m_view.setDateiTyp({});
    m_view.setDateiVerzeichnis({});
    m_view.setDateiName({});
}

bool Transfer::FtpUploadFile(const QString& remotePath, const QString& localPath) {
    if (!m_ftp->IsConnected())
        return false;
    const int result = m_ftp->PutFile(localPath, remotePath);
    if (result == 0)
        return true;
    if (!m_givenUp) {
        ++m_failedFiles;
        noteFailure(result, remotePath);
    }
    return false;
}

void Transfer::noteFailure(int code, const QString& what) {
    if (!m_givenUp)
        qWarning("Upload to the web shop, %s: %d %s | %s", qUtf8Printable(what), code,
                 qUtf8Printable(GetInternetErrorText(code, m_ftp->LastResponse())),
                 qUtf8Printable(m_ftp->Detail()));
}

void Transfer::DisconnectFTP() {
    m_ftp->Close();
    m_view.addStatusMsg(u"Closed"_s);
    m_view.addStatusMsg(u"No connection"_s);
    m_view.setStatus({});
}

void Transfer::giveUp() {
    m_givenUp = true;
    m_ftp->giveUp();
}

QString Transfer::outcome() const {
    if (m_givenUp)
        return u"Online Shop: Die Übertragung ist abgebrochen"_s;
    if (m_loginResult != 0)
        return u"Online Shop: Anmeldung fehlgeschlagen, %1"_s.arg(loginProblem(m_loginResult));
    if (m_failedFiles > 0)
        return m_failedFiles == 1 ? u"Online Shop: Eine Datei ist nicht angekommen"_s
                                  : u"Online Shop: %1 Dateien sind nicht angekommen"_s.arg(m_failedFiles);
    if (!m_shopProblem.isEmpty())
        return u"Online Shop: Der Shop hat die Daten nicht übernommen"_s;
    return u"Online Shop: Daten übertragen"_s;
}

} // namespace mod_InternetTransfer
