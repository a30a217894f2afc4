// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#pragma once

#include <QMetaMethod>
#include <QMetaObject>
#include <QMetaProperty>
#include <QString>
#include <QStringList>

// What a class tells of itself through the meta-object system, as text that a test can compare.
// qreal is spelt "double" there.

//! Such as "signal void moved(QPointF to)" or "protected slot void reset()".
inline QString methodText(const QMetaMethod &method)
{
    static const QString accesses[] = {QStringLiteral("private "), QStringLiteral("protected "),
                                       QString()};
    static const QString kinds[] = {QStringLiteral("method"), QStringLiteral("signal"),
                                    QStringLiteral("slot"), QStringLiteral("constructor")};
    const QList<QByteArray> types = method.parameterTypes();
    const QList<QByteArray> names = method.parameterNames();
    QStringList parameters;
    for (int i = 0; i < types.size(); ++i)
        parameters.append(QString::fromLatin1(types.at(i) + ' ' + names.at(i)).trimmed());
    return QStringLiteral("%1%2 %3 %4(%5)")
            .arg(accesses[method.access()], kinds[method.methodType()],
                 QString::fromLatin1(method.typeName()), QString::fromLatin1(method.name()),
                 parameters.join(QStringLiteral(", ")));
}

//! The class's own methods, not those of its base classes, in the order of their indices.
inline QStringList ownMethods(const QMetaObject &metaObject)
{
    QStringList texts;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        texts.append(methodText(metaObject.method(i)));
    return texts;
}

//! Such as "int count: readable, writable, designable, scriptable, stored".
inline QString propertyText(const QMetaProperty &property)
{
    QStringList traits;
    const auto add = [&traits](bool has, const char *trait) {
        if (has)
            traits.append(QString::fromLatin1(trait));
    };
    add(property.isReadable(), "readable");
    add(property.isWritable(), "writable");
    add(property.isResettable(), "resettable");
    add(property.isDesignable(), "designable");
    add(property.isScriptable(), "scriptable");
    add(property.isStored(), "stored");
    add(property.isUser(), "user");
    add(property.isConstant(), "constant");
    add(property.isFinal(), "final");
    add(property.hasNotifySignal(), "notifying");
    return QStringLiteral("%1 %2: %3")
            .arg(QString::fromLatin1(property.typeName()), QString::fromLatin1(property.name()),
                 traits.join(QStringLiteral(", ")));
}

//! The class's own properties, not those of its base classes, in the order of their indices.
inline QStringList ownProperties(const QMetaObject &metaObject)
{
    QStringList texts;
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i)
        texts.append(propertyText(metaObject.property(i)));
    return texts;
}
