#pragma once
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QString>

class QUrl;

/// What all requests to a web server have in common.
namespace platform {

/// Why there is no answer: the operating system's error number and a German sentence.
struct WebProblem {
    int number = 0;
    QString sentence{};
};

/// So much of an answer waits for its reader.
constexpr qint64 kReadAhead = 256LL * 1024;

bool isWebAddress(const QUrl& url);
/// Follows no redirect, takes no packed answer. `certificate`: file of one to trust beside the system's own,
/// "" for none.
QNetworkRequest webRequest(const QUrl& url, const QString& certificate);
int statusOf(const QNetworkReply& reply);
/// Although it was asked not to be.
bool isPacked(const QNetworkReply& reply);
WebProblem problemOf(QNetworkReply::NetworkError error);
WebProblem problemOfRedirect();
WebProblem problemOfUnreadable();
WebProblem problemOfAddress();
WebProblem problemOfSilence();
WebProblem problemOfSize();

} // namespace platform
