#include "maintenance/frmDatenBackup.h"
#include "common/Guard.h"
#include "maintenance/CheckedCopy.h"
#include "maintenance/modDatenBackup.h"
#include "platform/Dialogs.h"
#include "ui_frmDatenBackup.h"
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using common::connectGuarded;
using common::Origin;

frmDatenBackup::frmDatenBackup(const platform::Services& services, QWidget* parent) :
    frmDatensicherung(services, parent), m_ui(std::make_unique<Ui::frmDatenBackup>()) {
    m_ui->setupUi(this);
    hideAtFirst(*m_ui->ProgressBar);
    connectGuarded(Origin::User, m_ui->cmdSaveFile, &QPushButton::clicked, this,
                   [this] { cmdSaveFile_Click(); });
    connectGuarded(Origin::User, m_ui->cmdBackup, &QPushButton::clicked, this, [this] { cmdBackup_Click(); });
    connectGuarded(Origin::User, m_ui->cmdClose, &QPushButton::clicked, this, [this] { close(); });
}

frmDatenBackup::~frmDatenBackup() = default;

void frmDatenBackup::cmdSaveFile_Click() {
    const QString path =
        m_services.dialogs.SaveFile(windowTitle(), modDatenBackup::ProposedName(), {u"mdb"_s});
    if (path.isEmpty())
        return;
    m_ui->txt_BackupPfad->setText(QDir::toNativeSeparators(path));
    m_ui->cmdBackup->setFocus();
}

void frmDatenBackup::cmdBackup_Click() {
    const QString path = m_ui->txt_BackupPfad->text().trimmed();
    if (path.isEmpty())
        return tell(tr("Sie müssen zuerst einen Zielpfad auswählen"), tr("Zielpfad angeben"));
    if (const QString refusal = modDatenBackup::Refusal(path); !refusal.isEmpty())
        return tell(refusal, windowTitle());
    run(*m_ui->ProgressBar,
        {.work = [path](const platform::Progress& progress) { modDatenBackup::CreateBackup(path, progress); },
         .folders = {QFileInfo(path).absolutePath(), maintenance::dataFolder()},
         .texts =
             {.done = tr("Das Backup wurde erstellt. Das Programm wird jetzt geschlossen."),
              .doneTitle = tr("Backup erstellt"),
              .refused =
                  tr("Sie müssen die Anwendung als Administrator ausführen, damit Sie diese Funktion "
                     "ausnützen können. Drücken Sie mit der rechten Maustaste auf das Icon der Anwendung und "
                     "starten Sie die Programm 'Als Administrator ausführen'"),
              .failed = tr("Das Backup konnte nicht erstellt werden.")},
         .keepsOrder = true});
}
