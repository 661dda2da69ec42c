#include "QMugenRunner.h"

#include "MugRunDlg.h"
#include "QDefinitions.h"
#include "QInterface.h"
#include "QMugenEntry.h"
#include "QMugenModel.h"
#include "QMugenParams.h"
#include "QProgress.h"
#include "QProject.h"
#include "QTrace.h"
#include "QUserDialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

QMugenRunner::QMugenRunner(QInterface* iface, QWidget* window) : QObject(iface), iface(iface), window(window)
{}

bool QMugenRunner::choose(QString* exe, QString* params)
{
    QMugenModel& config = *mugenModel;
    int row = 0;
    if (config.rowCount() > 1) {
        MugRunDlg chooser(&config, config[QStringLiteral("last_mugen")].toInt(), window);
        if (chooser.exec() != QDialog::Accepted || chooser.chosen() < 0) return false;
        row = chooser.chosen();
        config[QStringLiteral("last_mugen")] = row;
    }
    const QMugenEntry* entry = config.entry(row);
    *exe = entry->exe;
    *params = entry->params;
    return true;
}

void QMugenRunner::run()
{
    if (!finished) {
        QUserDialogs::warning(tr("Warning!"),
                              tr("Oops, you can run only one instance of M.U.G.E.N. at the same time."));
        return;
    }
    if (!mugenModel || mugenModel->rowCount() == 0) {
        QUserDialogs::warning(
            tr("Warning!"),
            tr("Oops, you need to configure a M.U.G.E.N. first. Do it in the Tools / Options."));
        return;
    }
    QString exe, params;
    if (!choose(&exe, &params) || !QFileInfo(exe).isFile()) return;
    const QList<int> numbers = QMugenParams::placeholders(params);
    if (numbers.isEmpty()) {
        QUserDialogs::warning(tr("Warning!"),
                              tr("Oops, wrong parameters on the M.U.G.E.N. configuration. Check it "
                                 "in the Tools / Options."));
        return;
    }
    const QString folder = QFileInfo(exe).absolutePath();
    QStringList written;
    for (int i = 0; i < numbers.size(); ++i) {
        const int number = numbers.at(i);
        if (number > iface->projectCount()) continue;
        QProject* project = number == 0 ? iface->currentProject() : iface->project(number - 1);
        if (!project) continue;
        const QString name = QStringLiteral("tv3_%1").arg(i);
        QString target = name, file = name, writeFolder;
        switch (project->type()) {
        case Character:
            writeFolder = folder + QStringLiteral("/chars/") + name + QLatin1Char('/');
            written << writeFolder;
            break;
        case Stage:
            writeFolder = folder + QStringLiteral("/stages/");
            break;
        case SystemScreen:
            file = QFileInfo(project->definitions()->filePath()).completeBaseName();
            writeFolder = folder + QStringLiteral("/data/") + name + QLatin1Char('/');
            target = name + QLatin1Char('/') + file + QStringLiteral(".def");
            written << writeFolder;
            break;
        default:
            QUserDialogs::warning(tr("Warning!"), tr("Oops, you can't run Storyboard, Font or Fight FX."));
            continue;
        }
        {
            QProgress progress(window, tr("Saving project for testing..."));
            connect(project, &QProject::progress, &progress, &QProgress::onProgress);
            project->saveTestCopy(writeFolder, file, &written);
        }
        params = QMugenParams::replace(params, number, target);
    }

    finished = false;
    QProcess game;
    connect(&game, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int exitCode) { mugenFinished(exitCode); });
    // A game that cannot start never finishes; the wait must end all the same.
    connect(&game, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) mugenFinished(-1);
    });
    game.setWorkingDirectory(folder);
    QTrace::write(QStringLiteral("mugen"), exe + QLatin1Char(' ') + params);
    game.start(exe, QMugenParams::arguments(params), QIODevice::ReadWrite);
    // The window stays alive while the game runs; only the game's end ends the wait.
    while (!finished) {
        game.waitForFinished(10);
        QCoreApplication::processEvents();
    }
    for (const QString& path : std::as_const(written)) {
        if (path.endsWith(QLatin1Char('/')))
            QDir(path).removeRecursively();
        else
            QFile::remove(path);
    }
    QTrace::write(QStringLiteral("mugen"), QStringLiteral("cleaned"));
}

void QMugenRunner::mugenFinished(int exitCode)
{
    QTrace::write(QStringLiteral("mugen"), QStringLiteral("finished %1").arg(exitCode));
    finished = true;
}
