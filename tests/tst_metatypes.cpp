// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include <QMetaType>
#include <QSet>
#include <QTextCharFormat>

// An application declares the types of signals and slots that it puts into variants, whatever the
// library does, and before or after it includes the library's headers.
Q_DECLARE_METATYPE(QTextCharFormat)
Q_DECLARE_METATYPE(QSet<Qt::WindowFrameSection>)

#include "WarningFreeTest.h"

#include <Scene/Decorator/ResizeDecorator.h>
#include <Scene/SceneHelper.h>
#include <Scene/TitleItem.h>

#include <QSignalSpy>
#include <QTextCursor>
#include <QTextDocument>

class MetaTypesTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void formatIsSpiedOn();
    void formatIsQueued_data();
    void formatIsQueued();
    void handlesAreQueued();
};

namespace {

/// A title whose next format is bold.
void insertBold(TitleItem &title)
{
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QTextCursor(title.document()).insertText(QStringLiteral("text"), bold);
    title.checkFormatChanges(QEvent::KeyPress);
}

/// Takes formats as a slot does that is connected by its name.
class Receiver : public QObject
{
    Q_OBJECT

public:
    QVector<QTextCharFormat> formats;

public Q_SLOTS:
    void take(const QTextCharFormat &format) { formats.append(format); }
};

} // namespace

void MetaTypesTest::formatIsSpiedOn()
{
    TitleItem title(QSizeF(100.0, 50.0), nullptr);
    QSignalSpy formats(&title, SIGNAL(currentCharFormatChanged(QTextCharFormat)));
    insertBold(title);
    QCOMPARE(formats.count(), 1);
    QCOMPARE(formats.at(0).at(0).value<QTextCharFormat>().fontWeight(), int(QFont::Bold));
}

void MetaTypesTest::formatIsQueued_data()
{
    QTest::addColumn<bool>("isByName");

    QTest::newRow("by its address") << false;
    QTest::newRow("by its name") << true;
}

void MetaTypesTest::formatIsQueued()
{
    QFETCH(const bool, isByName);

    TitleItem title(QSizeF(100.0, 50.0), nullptr);
    Receiver receiver;
    if (isByName)
        connect(&title, SIGNAL(currentCharFormatChanged(QTextCharFormat)), &receiver,
                SLOT(take(QTextCharFormat)), Qt::QueuedConnection);
    else
        connect(&title, &TitleItem::currentCharFormatChanged, &receiver, &Receiver::take,
                Qt::QueuedConnection);
    insertBold(title);
    QVERIFY(receiver.formats.isEmpty());
    QTRY_COMPARE(receiver.formats.size(), 1);
    QCOMPARE(receiver.formats.first().fontWeight(), int(QFont::Bold));
}

void MetaTypesTest::handlesAreQueued()
{
    TitleItem *title = new TitleItem(QSizeF(100.0, 50.0), nullptr);
    ResizeDecorator frame(title);
    const QSet<Qt::WindowFrameSection> sides{Qt::LeftSection, Qt::RightSection};
    QVERIFY(QMetaObject::invokeMethod(&frame, "setAvailableHandles", Qt::QueuedConnection,
                                      Q_ARG(QSet<Qt::WindowFrameSection>, sides)));
    QTRY_COMPARE(frame.availableHandles(), sides);
}

QTEST_MAIN(MetaTypesTest)
#include "tst_metatypes.moc"
