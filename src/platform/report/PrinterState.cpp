#include "platform/report/PrinterState.h"
#ifdef TAVOLINO_CUPS
#include <cups/cups.h>
#endif

namespace platform {

#ifdef TAVOLINO_CUPS

namespace {

/// A queue's attributes as the service gave them; `operator*` is null when it knows no such queue.
class Queue {
  public:
    explicit Queue(const QString& name) :
        m_dest(cupsGetNamedDest(CUPS_HTTP_DEFAULT, name.toUtf8().constData(), nullptr)) {}

    ~Queue() { cupsFreeDests(m_dest ? 1 : 0, m_dest); }

    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;

    explicit operator bool() const { return m_dest != nullptr; }

    QByteArray option(const char* name) const {
        return cupsGetOption(name, m_dest->num_options, m_dest->options);
    }

  private:
    cups_dest_t* m_dest;
};

bool serviceAnswers() {
    http_t* http =
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, 3000, nullptr);
    httpClose(http);
    return http != nullptr;
}

} // namespace

PrinterState printerState(const QString& name) {
    const Queue queue(name);
    if (!queue)
        return serviceAnswers() ? PrinterState::Missing : PrinterState::ServiceSilent;
    if (queue.option("printer-is-accepting-jobs") == "false")
        return PrinterState::Rejecting;
    return queue.option("printer-state").toInt() == IPP_PSTATE_STOPPED ? PrinterState::Stopped
                                                                       : PrinterState::Ready;
}

QString refusalOfLastJob() {
    if (cupsLastError() <= IPP_STATUS_OK_EVENTS_COMPLETE)
        return {};
    return QString::fromUtf8(cupsLastErrorString());
}

void withdrawLastJob(const QString& printer) {
    const QByteArray name = printer.toUtf8();
    cups_job_t* jobs = nullptr;
    const int count = cupsGetJobs2(CUPS_HTTP_DEFAULT, &jobs, name.constData(), 1, CUPS_WHICHJOBS_ACTIVE);
    int newest = 0;
    for (int i = 0; i < count; ++i)
        newest = qMax(newest, jobs[i].id);
    if (newest > 0)
        cupsCancelJob2(CUPS_HTTP_DEFAULT, name.constData(), newest, 0);
    cupsFreeJobs(qMax(count, 0), jobs);
}

QString printerPort(const QString& name) {
    const Queue queue(name);
    return queue ? QString::fromUtf8(queue.option("device-uri")) : QString();
}

#else

PrinterState printerState(const QString&) {
    return PrinterState::Ready;
}

QString refusalOfLastJob() {
    return {};
}

void withdrawLastJob(const QString&) {
}

QString printerPort(const QString&) {
    return {};
}

#endif

} // namespace platform
