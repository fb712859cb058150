#include "platform/Libraries.h"
#include "store/EngineFacts.h"
#include <SQLiteCpp/SQLiteCpp.h>
#include <curl/curl.h>
#include <sodium.h>
#include <sofia-sip/su_config.h>
#include <xlsxwriter.h>
// Needs what su_config.h defines.
#include <sofia-sip/sofia_features.h>
#ifdef Q_OS_UNIX
#include <cups/cups.h>
#endif

using namespace Qt::StringLiterals;

namespace platform {

QStringList libraries() {
    QStringList all{u"Qt "_s + QLatin1String(qVersion()),
                    store::engineName(),
                    u"SQLiteCpp "_s + QLatin1String(SQLITECPP_VERSION),
                    u"libcurl "_s + QLatin1String(curl_version_info(CURLVERSION_NOW)->version),
                    u"libsodium "_s + QLatin1String(sodium_version_string()),
                    u"Sofia-SIP "_s + QLatin1String(SOFIA_SIP_VERSION),
                    u"libxlsxwriter "_s + QLatin1String(lxw_version()),
                    u"Mustache (kainjow)"_s};
#ifdef Q_OS_UNIX
    all << u"CUPS %1.%2.%3"_s.arg(CUPS_VERSION_MAJOR).arg(CUPS_VERSION_MINOR).arg(CUPS_VERSION_PATCH);
#endif
    return all;
}

} // namespace platform
