#include "platform/line/SipIdentity.h"
#include <algorithm>
#include <cstring>

namespace platform::sipIdentity {
namespace {

constexpr int longestNumber = 50;

QByteArray upTo(const QByteArray& text, const char* stops) {
    const auto end =
        std::find_if(text.begin(), text.end(), [&](char c) { return c && std::strchr(stops, c); });
    return text.left(end - text.begin());
}

QString decoded(const QByteArray& escaped) {
    auto text = QString::fromUtf8(QByteArray::fromPercentEncoding(escaped));
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    return text.left(longestNumber);
}

bool isSuppressed(const QString& user, const QByteArray& host) {
    return user.compare(u"anonymous", Qt::CaseInsensitive) == 0 || host.toLower().endsWith(".invalid");
}

/// Walks through a header value, minding quoted texts.
class Scanner {
  public:
    explicit Scanner(const QByteArray& text) : m_text(text) {}

    bool atEnd() const { return m_position >= m_text.size(); }

    /// Moves to the next of `stops` outside of quotes and gives what lies before it.
    QByteArray until(const char* stops) {
        const auto start = m_position;
        bool quoted = false;
        for (; !atEnd(); ++m_position) {
            const char c = m_text[m_position];
            if (quoted && c == '\\')
                ++m_position;
            else if (c == '"')
                quoted = !quoted;
            else if (!quoted && c && std::strchr(stops, c))
                break;
        }
        m_position = std::min<qsizetype>(m_position, m_text.size());
        return m_text.mid(start, m_position - start);
    }

    bool take(char c) {
        const bool isThere = !atEnd() && m_text[m_position] == c;
        m_position += isThere ? 1 : 0;
        return isThere;
    }

  private:
    const QByteArray& m_text;
    qsizetype m_position = 0;
};

bool asksForPrivacy(const QByteArray& privacy) {
    const auto values = privacy.toLower().replace(',', ';').split(';');
    return std::any_of(values.begin(), values.end(), [](const QByteArray& value) {
        const auto name = value.trimmed();
        return name == "id" || name == "user" || name == "header";
    });
}

} // namespace

QString userPart(const QByteArray& uri) {
    const auto scheme = upTo(uri, ":").trimmed().toLower();
    const auto rest = uri.mid(uri.indexOf(':') + 1).trimmed();
    if (scheme == "tel")
        return decoded(upTo(rest, ";?"));
    const auto at = rest.indexOf('@');
    if ((scheme != "sip" && scheme != "sips") || at < 0)
        return {};
    const auto user = decoded(upTo(rest.left(at), ":;"));
    return isSuppressed(user, upTo(rest.mid(at + 1), ":;?")) ? QString() : user;
}

QByteArrayList addresses(const QByteArray& headerValue) {
    QByteArrayList found;
    for (Scanner scanner(headerValue); !scanner.atEnd(); scanner.take(',')) {
        const auto plain = scanner.until("<,;").trimmed();
        if (scanner.take('<')) {
            const auto uri = scanner.until(">");
            if (scanner.take('>'))
                found << uri.trimmed();
        } else if (!plain.isEmpty()) {
            found << plain;
        }
        scanner.until(",");
    }
    return found;
}

QString caller(const QByteArrayList& assertedIdentities, const QByteArray& fromUri,
               const QByteArray& privacy) {
    if (asksForPrivacy(privacy))
        return {};
    for (const auto& header : assertedIdentities) {
        for (const auto& uri : addresses(header)) {
            auto user = userPart(uri);
            if (!user.isEmpty())
                return user;
        }
    }
    return userPart(fromUri);
}

bool isLocal(const QHostAddress& address) {
    static const char* const nets[] = {"10.0.0.0/8", "172.16.0.0/12", "192.168.0.0/16", "fc00::/7"};
    return address.isLoopback() || address.isLinkLocal() ||
           std::any_of(std::begin(nets), std::end(nets), [&](const char* net) {
               return address.isInSubnet(QHostAddress::parseSubnet(QLatin1String(net)));
           });
}

} // namespace platform::sipIdentity
