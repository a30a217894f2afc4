// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleClipboard.h"

#include "ProjectFile.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace {

QString mimeType()
{
    return QStringLiteral("application/x-titlescene-project+json");
}

} // namespace

void copyToClipboard(const QVector<Title> &titles)
{
    Project project;
    project.titles = titles;
    auto *data = new QMimeData; // the clipboard's
    data->setData(mimeType(), toJson(project));
    QGuiApplication::clipboard()->setMimeData(data);
}

QVector<Title> titlesFromClipboard()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!data || !data->hasFormat(mimeType()))
        return {};
    QString error;
    const auto project = projectFromJson(data->data(mimeType()), &error);
    return project ? project->titles : QVector<Title>();
}
