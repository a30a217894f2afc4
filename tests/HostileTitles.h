// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

// Titles that were made to do harm.

struct HostileTitle
{
    QByteArray name;
    QByteArray text;
};

/// One that is refused, and what the refusal says among other things.
struct RefusedTitle : HostileTitle
{
    QString refusal;
};

std::vector<RefusedTitle> refusedTitles();

/// Admitted, and refused at 500 ms for what animations make of them.
std::vector<RefusedTitle> titlesTurningHostile();

/// Each shows what redRect() alone shows.
std::vector<HostileTitle> harmlessTitles();

/// Each shows what redRect() alone shows, and refers to the file of that name with %1.
std::vector<HostileTitle> titlesNamingFile();

/// Refused, or drawn with whatever becomes of them.
std::vector<HostileTitle> oddTitles();

/// The same, and refers to the folder of that name with %1, where there are a picture, a style
/// sheet, a pipe, a text, a document type and a title: canary.png, #canary.png, canary.css, .pipe,
/// .txt, .dtd, .svg.
std::vector<HostileTitle> titlesNamingFolder();

QString redRect();

/// An image element with a reference.
QString imageElement(const QString &reference);
