#pragma once
#include <QByteArray>
#include <QByteArrayList>
#include <QHostAddress>
#include <QString>

/// Who calls, out of what a SIP request tells about its caller.
namespace platform::sipIdentity {

/// The user part of a sip, sips or tel URI: without scheme, password, parameters and host, escapes decoded,
/// else as it stands ("sip:+41441234567;phone-context=x@10.0.0.1" gives "+41441234567", "tel:044-123" gives
/// "044-123").
/// "" for any other URI, for one without a user, and for a suppressed one: the user "anonymous", or a host in
/// the domain ".invalid". Control characters are dropped; more than 50 characters are cut, as nothing that
/// long is a number.
QString userPart(const QByteArray& uri);

/// The URIs of a header value with one or more addresses, such as `"Meier, Hans" <sip:1@a>, <tel:1>`. A
/// broken rest is left out.
QByteArrayList addresses(const QByteArray& headerValue);

/// What goes on as the caller's number; "" for a suppressed one. A Privacy that asks for it suppresses; then
/// the first usable address of the P-Asserted-Identity headers counts, and without one the URI of From.
QString caller(const QByteArrayList& assertedIdentities, const QByteArray& fromUri,
               const QByteArray& privacy);

/// Whether an address is one that no stranger in the internet has: this computer's, or of a private network.
bool isLocal(const QHostAddress& address);

} // namespace platform::sipIdentity
