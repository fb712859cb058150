#include "maintenance/frmDatenRestore.h"
#include "common/Guard.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/modDatenRestore.h"
#include "maintenance/modTagessicherung.h"
#include "platform/Dialogs.h"
#include "ui_frmDatenRestore.h"
#include <QDir>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

namespace {

QString textOf(const modTagessicherung::Copy& copy) {
    using modTagessicherung::Occasion;
    const QString moment = copy.time.toString(u"dd.MM.yyyy HH:mm"_s);
    switch (copy.occasion) {
    case Occasion::Restore:
        return frmDatenRestore::tr("%1, vor dem Einlesen").arg(moment);
    case Occasion::Update:
        return frmDatenRestore::tr("%1, vor der Aktualisierung").arg(moment);
    default:
        return copy.time.toString(u"dd.MM.yyyy"_s);
    }
}

} // namespace

frmDatenRestore::frmDatenRestore(const platform::Services& services, QWidget* parent) :
    frmDatensicherung(services, parent), m_ui(std::make_unique<Ui::frmDatenRestore>()) {
    m_ui->setupUi(this);
    hideAtFirst(*m_ui->ProgressBar);
    m_ui->cmdBackup->setEnabled(false);
    fillSicherungen();
    connectGuarded(Origin::User, m_ui->combo_Sicherungen, &QComboBox::activated, this, [this] {
        if (const QString file = m_ui->combo_Sicherungen->currentData().toString(); !file.isEmpty())
            choose(file);
    });
    connectGuarded(Origin::User, m_ui->cmdLoadFile, &QPushButton::clicked, this,
                   [this] { cmdLoadFile_Click(); });
    connectGuarded(Origin::User, m_ui->cmdBackup, &QPushButton::clicked, this, [this] { cmdBackup_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
    // Without a copy the list is no place for the keys.
    m_ui->cmdLoadFile->setFocus();
}

frmDatenRestore::~frmDatenRestore() = default;

void frmDatenRestore::fillSicherungen() {
    QComboBox& list = *m_ui->combo_Sicherungen;
    const QList<modTagessicherung::Copy> copies = modTagessicherung::Copies();
    list.addItem(copies.isEmpty() ? tr("(noch keine)") : tr("(Datum wählen)"));
    for (const modTagessicherung::Copy& copy : copies)
        list.addItem(textOf(copy), copy.file);
    list.setEnabled(!copies.isEmpty());
}

void frmDatenRestore::cmdLoadFile_Click() {
    const QString path = m_services.dialogs.OpenFile(windowTitle(), tr("Datenbank (*.mdb)"));
    if (path.isEmpty())
        return;
    m_ui->combo_Sicherungen->setCurrentIndex(0);
    choose(path);
}

void frmDatenRestore::choose(const QString& path) {
    m_ui->txt_BackupPfad->setText(QDir::toNativeSeparators(path));
    m_ui->cmdBackup->setEnabled(true);
    m_ui->cmdBackup->setFocus();
}

void frmDatenRestore::cmdBackup_Click() {
    const QString path = m_ui->txt_BackupPfad->text();
    if (const QString refusal = modDatenRestore::Refusal(path); !refusal.isEmpty())
        return tell(refusal, windowTitle());
    const Texts texts{
        .done = tr("Das Backup wurde eingelesen. Das Programm wird jetzt geschlossen."),
        .doneTitle = tr("Backup einlesen"),
        .refused =
            tr("Das Einlesen des Backup's ist fehlgeschlagen. Sie müssen die Anwendung als Administrator "
               "ausführen, damit Sie diese Funktion ausnützen können. Drücken Sie mit der rechten Maustaste "
               "auf das Icon der Anwendung und starten Sie die Programm 'Als Administrator ausführen'"),
        .failed = tr("Das Einlesen des Backup's ist fehlgeschlagen.")};
    try {
        modDatenRestore::ProbeBackup(path);
    } catch (const common::RunTimeError& failure) {
        return tellFailure(failure, {}, texts);
    }
    run(*m_ui->ProgressBar,
        {.work =
             [path](const platform::Progress& progress) { modDatenRestore::RestoreBackup(path, progress); },
         .folders = {maintenance::dataFolder(), modTagessicherung::Folder()},
         .texts = texts});
}
