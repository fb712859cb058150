#pragma once
#include <QString>
#include <stdexcept>

namespace common {

/// A failure of the store or the platform: what the lower floors throw and never swallow.
///
/// `sentence()` is German and meant for the error box; `detail()` is technical and meant for the log: of a
/// statement it tells the text without its values.
/// At the top one handler shows the box, writes the log line and ends the program; see Guard.h.
class RunTimeError : public std::runtime_error {
  public:
    RunTimeError(int number, const QString& sentence, const QString& detail = {});

    int number() const { return m_number; }

    const QString& sentence() const { return m_sentence; }

    const QString& detail() const { return m_detail; }

  private:
    int m_number;
    QString m_sentence;
    QString m_detail;
};

/// Numbers of the run-time errors, in the numbering that the firm's log readers know.
enum RunTimeErrorNumber : int {
    kTypeMismatch = 13,
    kFileNotFound = 53,
    kDiskFull = 61,
    kNotWritable = 70,
    kNoCurrentRow = 3021,
    kFieldNotFound = 3265,
    kObjectOpen = 3705,
    kObjectClosed = 3704,
    kStoreFailure = -2147467259,
    kPasswordRefused = -2147217843,
    kSqlFailure = -2147217900,
    kDuplicateKey = -2147217887,
    kTargetExists = -2147217897,
    kSchemaTooNew = 4001,
    kPlatformFailure = 4002,
    kOrderDisagrees = 4003,
    /// No database server answers. What is on the screen stays, and the program goes on in any case.
    kServerGone = 4004,
    /// The store has taken the transaction back; done anew it may go through.
    kTryAgain = 4005,
};

} // namespace common
