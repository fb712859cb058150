#pragma once
#include "common/RunTimeError.h"
#include "platform/Progress.h"
#include "platform/Services.h"
#include <QProgressBar>
#include <QWidget>
#include <functional>

/// What backup and restore share: the work with the databases closed, its progress, and the end of the
/// program that follows it.
class frmDatensicherung : public QWidget {
    Q_OBJECT
  public:
    frmDatensicherung(const platform::Services& services, QWidget* parent);

  protected:
    struct Texts {
        QString done, doneTitle;
        /// For refused rights, and for whatever else fails: the cause follows it.
        QString refused, failed;
    };

    struct Job {
        /// In a thread of its own.
        std::function<void(const platform::Progress&)> work;
        /// Where it writes.
        QStringList folders;
        Texts texts;
        /// The order on the screen is offered by the next start.
        bool keepsOrder = false;
    };

    /// The controls below keep their places when the bar comes.
    static void hideAtFirst(QProgressBar& bar);
    /// Closes the other screens and the databases, does the work, tells how it went and ends the program.
    /// Where a screen has something to bring to its end it says so, and the program goes on; other screens
    /// may have closed by then.
    void run(QProgressBar& bar, const Job& job);
    void tellFailure(const common::RunTimeError& failure, const QStringList& folders, const Texts& texts);
    void tell(const QString& text, const QString& title);

    platform::Services m_services;

  private:
    /// All screens but this one. False, which it tells, where one has something to bring to its end first.
    bool UnloadAllMDIForms();
};
