#pragma once
#include <QString>
#include <QStringList>

namespace install {

struct InstallOptions {
    /// Adds an invented firm with master data, a phone book and 90 days of bookings up to yesterday.
    bool demo = false;
    /// Above 0: fills the databases for measuring; 1.0 is a firm of 200,000 customers and 1,000,000 orders.
    double large = 0;
    /// Folder of the report templates; none are copied when it is empty.
    QString reportsFrom;
};

/// Creates what an installation in `appFolder` lacks: the folders Data, Reports and Internet, the four
/// databases with the rows that belong to an installation, the pictures of the shop, the report templates,
/// tavolino.ini (readable by its owner only, still without a password of the owner: see OwnerPassword.h).
///
/// What exists is never touched, so that demo and large rows come only into databases that this call creates.
/// A database gets its name when it is complete: a crash in between leaves none behind that is half made.
/// Databases that stand on a server after tavolino.ini are made there, in a database that is empty; where
/// they are there already, this installation is one more station.
///
/// Gives what was done as German sentences. Throws common::RunTimeError.
QStringList installDatabases(const QString& appFolder, const InstallOptions& options = {});

} // namespace install
