#pragma once
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace test {

/// A print service of the test's own, with its own folders, on a socket; the system's service is not touched.
/// While it lives, this process prints through it. Jobs end as PDF files, one a queue, a new job overwriting
/// the last.
///
/// One lives at a time. `started()` is false when the service could not be started, with the reason in
/// `failure()`.
class CupsServer {
  public:
    CupsServer();
    ~CupsServer();
    CupsServer(const CupsServer&) = delete;
    CupsServer& operator=(const CupsServer&) = delete;

    bool started() const { return m_failure.isEmpty(); }

    QString failure() const { return m_failure; }

    void addQueue(const QString& name);
    /// Holds the queue; it still takes jobs.
    void pause(const QString& name);
    void resume(const QString& name);
    /// Lets the queue refuse jobs.
    void reject(const QString& name);
    void accept(const QString& name);
    /// Lets the service refuse this user's jobs on a queue that looks ready.
    void denyUser(const QString& name);
    void setDefault(const QString& name);

    /// Number of jobs that the queue has finished.
    int finishedJobs(const QString& name);
    /// Path of the PDF of the queue's latest job, once the queue has finished `jobs` jobs; empty after 10
    /// seconds.
    QString waitForPdf(const QString& name, int jobs = 1);

  private:
    void writeConfiguration();
    void start();

    QString path(const QString& name) const { return m_folder.filePath(name); }

    QString run(const QString& program, const QStringList& arguments);
    void admin(const QString& program, const QStringList& arguments);

    QTemporaryDir m_folder;
    QProcess m_service;
    QString m_failure;
    QByteArray m_formerServer;
};

/// The text of a PDF file in the order it was drawn, pages ended by a form feed.
QString pdfText(const QString& path);

/// Pages and size in points of its first page.
struct PdfPages {
    int count = 0;
    double width = 0;
    double height = 0;
};

PdfPages pdfPages(const QString& path);

} // namespace test
