#pragma once
#include <QString>
#include <QStringList>

namespace install {

struct InstallOptions {
    /// Folder of the report templates; none are copied when it is empty.
    QString reportsFrom;
};

/// Creates what an installation in `appFolder` lacks: the folders Data, Reports and Internet, the four
/// databases with the rows that belong to an installation, the pictures of the shop, the report templates,
/// tavolino.ini (readable by its owner only).
///
/// What exists is never touched. A database gets its name when it is complete: a crash in between leaves none
/// behind that is half made.
/// Gives what was done as German sentences. Throws common::RunTimeError.
QStringList installDatabases(const QString& appFolder, const InstallOptions& options = {});

} // namespace install
