// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TitleText.h"

#include "Failure.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextCodec>

#include <cstdio>

namespace {

// Far above any title; it ends the reading of something that never ends.
constexpr qint64 mostMebibytes = 64;
constexpr qint64 mostBytes = mostMebibytes * 1024 * 1024;

bool open(QFile &file, const QString &titleName)
{
    if (titleName == standardInputName())
        return file.open(stdin, QIODevice::ReadOnly);
    file.setFileName(titleName);
    return file.open(QIODevice::ReadOnly);
}

// Up to `most` bytes. A single read of a pipe gives what has been written so far.
QByteArray readToEnd(QFile &file, qint64 most)
{
    QByteArray bytes;
    QByteArray part;
    do {
        part = file.read(most - bytes.size());
        bytes += part;
    } while (!part.isEmpty() && bytes.size() < most);
    return bytes;
}

QByteArray readBytes(const QString &titleName)
{
    QFile file;
    if (!open(file, titleName))
        throw Failure(displayName(titleName), file.errorString());

    const QByteArray bytes = readToEnd(file, mostBytes + 1);
    if (file.error() != QFileDevice::NoError)
        throw Failure(displayName(titleName), file.errorString());
    if (bytes.size() > mostBytes) {
        throw Failure(displayName(titleName),
                      QStringLiteral("larger than %1 MiB").arg(mostMebibytes));
    }
    return bytes;
}

// In what the XML declaration says a text is, when it can be read up to there as it is.
QTextCodec *declaredCodec(const QByteArray &bytes)
{
    constexpr int longestDeclaration = 200;
    static const QRegularExpression encoding(
            QStringLiteral("^<\\?xml\\s[^>]*\\bencoding\\s*=\\s*[\"']([\\w.:-]+)[\"']"));
    const QString begin = QString::fromLatin1(bytes.left(longestDeclaration));
    QTextCodec *codec = QTextCodec::codecForName(encoding.match(begin).captured(1).toLatin1());
    const QString plain = QStringLiteral("<?xml");
    return codec && codec->fromUnicode(plain) == plain.toLatin1() ? codec : nullptr;
}

const QTextCodec *codecFor(const QByteArray &bytes)
{
    if (const QTextCodec *const marked = QTextCodec::codecForUtfText(bytes, nullptr))
        return marked;
    const QTextCodec *const declared = declaredCodec(bytes);
    return declared ? declared : QTextCodec::codecForName("UTF-8");
}

} // namespace

QString standardInputName()
{
    return QStringLiteral("-");
}

QString displayName(const QString &titleName)
{
    return titleName == standardInputName() ? QStringLiteral("standard input") : titleName;
}

QString readTitleText(const QString &titleName)
{
    const QByteArray bytes = readBytes(titleName);
    const QTextCodec *const codec = codecFor(bytes);
    QTextCodec::ConverterState state;
    const QString text = codec->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0) {
        throw Failure(displayName(titleName),
                      QStringLiteral("not valid %1 text").arg(QString::fromLatin1(codec->name())));
    }
    return text;
}
