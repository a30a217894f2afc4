// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "MainWindow.h"

#include "PngExport.h"

#include <QFileDialog>
#include <QProgressDialog>
#include <QStatusBar>

void MainWindow::askWhereToExport()
{
    auto *dialog = new QFileDialog(this, tr("Export Frames"));
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    openDialog(dialog, [this](const QString &folder) { exportFrames(folder); });
}

void MainWindow::exportFrames(const QString &folder)
{
    m_canvas.finishEditing();
    m_player.setPlaying(false);
    auto *exporting = new PngExport(m_canvas.project(), folder, this);
    followExport(exporting);
    exporting->start();
}

/// Shows how far it is, and ends with it.
void MainWindow::followExport(PngExport *exporting)
{
    auto *dialog = new QProgressDialog(tr("Exporting frames…"), tr("Cancel"), 0,
                                       exporting->frameCount(), this);
    dialog->setWindowModality(Qt::WindowModal);
    dialog->setMinimumDuration(0);
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    connect(dialog, &QProgressDialog::canceled, exporting, &PngExport::cancel);
    connect(exporting, &PngExport::progress, dialog, &QProgressDialog::setValue);

    const auto end = [this, exporting, dialog](const QString &message) {
        dialog->disconnect(exporting);
        dialog->close();
        dialog->deleteLater();
        exporting->deleteLater();
        statusBar()->showMessage(message);
    };
    connect(exporting, &PngExport::finished, this, [exporting, end] {
        end(tr("%n frame(s) exported", nullptr, exporting->frameCount()));
    });
    connect(exporting, &PngExport::cancelled, this, [end] { end(tr("Export cancelled")); });
    connect(exporting, &PngExport::failed, this, [this, end](const QString &reason) {
        end(tr("Export failed"));
        showFailure(tr("The frames can't be exported."), reason);
    });
    dialog->show();
}
