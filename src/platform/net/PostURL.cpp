#include "platform/net/PostURL.h"
#include "platform/Dialogs.h"
#include "platform/Services.h"
#include "platform/net/Internet.h"

namespace platform {

QString PostURL(const Services& services, const QString& url, QString* problem) {
    const std::unique_ptr<Inet> control = services.internet.inet();
    control->Execute(url);
    if (!services.dialogs.WaitForServer([&] { return control->StillExecuting(); }))
        control->Cancel();
    const QString failure = control->Problem() + control->Refusal();
    if (!failure.isEmpty())
        qWarning("Server: %s", qUtf8Printable(failure));
    if (problem)
        *problem = failure;
    return control->Answer();
}

} // namespace platform
