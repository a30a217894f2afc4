// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The TitleScene authors

#include "TreeTest.h"

#include <Scene/Admission_p.h>
#include <Scene/Agreement_p.h>
#include <Scene/SvgElement.h>
#include <Scene/TreeEdit_p.h>
#include <Scene/TreeWalk_p.h>

#include <map>

// The states of a text and its tree, one transition after the other: named ones in a table, then
// random ones beside the plain way, which parses and saves everything at every step.

namespace {

using Verdict = Agreement::Verdict;
using Relation = Agreement::Relation;

const QByteArray plain = "<svg><g a=\"1\"><rect b=\"2\"/></g><rect a=\"3\"/></svg>";
const QByteArray longer = "<svg><g><g a=\"5\"/>longer</g><!--c--><g b=\"x&amp;y\"/></svg>  ";
const QByteArray withData = "<svg><?a b?><g a=\"1\"><![CDATA[x]]></g><g b=\"4\"/></svg>";
const QByteArray withSheet = "<?xml-stylesheet href=\"a.css\"?><svg><g a=\"1\"/></svg>";
const QByteArray broken = "<svg><h a=\"1\">";

QDomDocument treeOf(const QByteArray &text)
{
    QDomDocument tree;
    tree.setContent(text);
    return tree;
}

/// A text and its tree as a document has them, with all elements for its places.
class Title : public QBuffer
{
public:
    explicit Title(const QByteArray &text) : m_data(text)
    {
        setBuffer(&m_data);
        open(QIODevice::ReadWrite);
    }

    qint64 size() const override { return agreement.textSize(); }

    QByteArray text() const { return data().left(int(size())); }
    QDomElement root() const { return tree.documentElement(); }

    void write(const QByteArray &text, int start)
    {
        if (isWritable() && seek(start))
            QBuffer::write(text);
    }

    void findPlaces()
    {
        agreement.forgetPlaces();
        m_places.clear();
        for (TreeWalk walk(root()); !walk.atEnd(); walk.next()) {
            if (walk.node().isElement())
                m_places.push_back(walk.element());
        }
    }

    const std::vector<SvgElement> &places() const { return m_places; }

    /// Makes every write fail from now on, or no longer.
    void setFull(bool isFull) { m_isFull = isFull; }

    void setValue(const SvgElement &place, const QString &name, const QString &value)
    {
        agreement.edit(place, root(), name, [&](const QDomElement &element) {
            return value.isNull() ? eraseAttribute(element, name)
                                  : writeAttribute(element, name, value);
        });
    }

    /// Writes a frame of one value; a refusal makes it one that was judged and refused.
    void showFrame(const QString &value, const QString &refusal)
    {
        if (!refusal.isEmpty())
            agreement.beginDoubt();
        for (const SvgElement &place : m_places)
            setValue(place, QStringLiteral("a"), value);
        if (agreement.isSaved() || agreement.save())
            agreement.show({{nullptr, value, false}}, refusal);
    }

    QDomDocument tree;
    Agreement agreement{this, &tree, [this] { return pointersToPlaces(); }};

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        agreement.settle();
        return QBuffer::readData(data, std::min(maxSize, size() - pos()));
    }

    qint64 writeData(const char *data, qint64 size) override
    {
        const qint64 start = pos();
        agreement.beginWriting();
        const qint64 written = m_isFull ? -1 : QBuffer::writeData(data, size);
        agreement.endWriting(start, written);
        return written;
    }

private:
    std::vector<const SvgElement *> pointersToPlaces() const
    {
        std::vector<const SvgElement *> pointers;
        for (const SvgElement &place : m_places)
            pointers.push_back(&place);
        return pointers;
    }

    QByteArray m_data;
    std::vector<SvgElement> m_places;
    bool m_isFull = false;
};

/// What may happen to a title, by name.
const std::map<QString, void (*)(Title &)> happenings{
        {QStringLiteral("parse"), [](Title &title) { title.agreement.parse(); }},
        {QStringLiteral("places"), [](Title &title) { title.findPlaces(); }},
        {QStringLiteral("save"), [](Title &title) { title.agreement.save(); }},
        {QStringLiteral("declared"), [](Title &title) { title.agreement.saveAsDeclared(); }},
        {QStringLiteral("judge"), [](Title &title) { title.agreement.isAdmitted(); }},
        {QStringLiteral("write"), [](Title &title) { title.write(longer, 0); }},
        {QStringLiteral("break"), [](Title &title) { title.write(broken, 0); }},
        {QStringLiteral("inplace"), [](Title &title) { title.buffer() = plain + ' '; }},
        {QStringLiteral("detach"), [](Title &title) { title.buffer().data(); }},
        {QStringLiteral("edit"),
         [](Title &title) {
             title.setValue(title.places().back(), QStringLiteral("a"), QStringLiteral("new"));
         }},
        {QStringLiteral("erase"),
         [](Title &title) {
             title.setValue(title.places().back(), QStringLiteral("a"), QString());
         }},
        {QStringLiteral("trial"),
         [](Title &title) {
             title.agreement.beginTrial();
             title.setValue(title.places().back(), QStringLiteral("a"), QStringLiteral("tried"));
             title.setValue(title.places().back(), QStringLiteral("t"), QStringLiteral("tried"));
             title.agreement.takeBackEdits();
         }},
        {QStringLiteral("change"),
         [](Title &title) {
             title.root().setAttribute(QStringLiteral("c"), QStringLiteral("d"));
             title.agreement.treeChanged();
         }},
        {QStringLiteral("handout"), [](Title &title) { title.agreement.handOut(); }},
        {QStringLiteral("frame"),
         [](Title &title) { title.showFrame(QStringLiteral("f"), QString()); }},
        {QStringLiteral("badframe"),
         [](Title &title) { title.showFrame(QStringLiteral("bad"), QStringLiteral("too bad")); }},
        {QStringLiteral("close"), [](Title &title) { title.close(); }},
        {QStringLiteral("readonly"),
         [](Title &title) {
             title.close();
             title.open(QIODevice::ReadOnly);
         }},
        {QStringLiteral("reopen"),
         [](Title &title) {
             title.close();
             title.open(QIODevice::ReadWrite);
         }},
        {QStringLiteral("full"), [](Title &title) { title.setFull(true); }},
        {QStringLiteral("room"), [](Title &title) { title.setFull(false); }},
};

} // namespace

class AgreementTest : public WarningFreeTest
{
    Q_OBJECT

private Q_SLOTS:
    void goesFromStateToState_data();
    void goesFromStateToState();
    void keepsStartTagsOverFrames();
    void showsFrames();
    void saysWhatIsWrong();
    void isThePlainWay_data();
    void isThePlainWay();
};

Q_DECLARE_METATYPE(Agreement::Verdict)
Q_DECLARE_METATYPE(Agreement::Relation)

void AgreementTest::goesFromStateToState_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("steps");
    QTest::addColumn<Verdict>("verdict");
    QTest::addColumn<Relation>("relation");

    const auto row = [](const QByteArray &text, const char *steps, Verdict verdict,
                        Relation relation) {
        const QByteArray name = QByteArray(text == withData ? "CDATA: " : "") + steps;
        QTest::newRow(name.constData())
                << text << QString::fromLatin1(steps) << verdict << relation;
    };
    // Texts from outside.
    row(plain, "", Verdict::Unjudged, Relation::Apart);
    row(plain, "judge", Verdict::Admitted, Relation::Apart);
    row(broken, "judge", Verdict::Refused, Relation::Apart);
    row(withSheet, "judge", Verdict::Admitted, Relation::Apart);
    row(plain, "parse", Verdict::Admitted, Relation::Parsed);
    row(broken, "parse", Verdict::Refused, Relation::Parsed);
    row(plain, "parse write", Verdict::Unjudged, Relation::Apart);
    row(plain, "parse save write", Verdict::Unjudged, Relation::Apart);
    row(plain, "parse write parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse break parse", Verdict::Refused, Relation::Parsed);
    row(plain, "parse break parse write parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse inplace judge", Verdict::Admitted, Relation::Apart);
    row(plain, "parse write inplace judge", Verdict::Admitted, Relation::Apart);
    row(plain, "parse inplace parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse detach judge", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse save detach judge", Verdict::Admitted, Relation::Saved);
    // Saves.
    row(plain, "save", Verdict::Unjudged, Relation::Apart);
    row(plain, "parse save", Verdict::Admitted, Relation::Saved);
    row(plain, "parse declared", Verdict::Admitted, Relation::Apart);
    row(plain, "parse save declared", Verdict::Admitted, Relation::Apart);
    row(plain, "parse save parse", Verdict::Admitted, Relation::SavedAndParsed);
    row(withData, "parse save parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse write save", Verdict::Admitted, Relation::Saved);
    row(plain, "parse break judge save", Verdict::Admitted, Relation::Saved);
    row(plain, "parse save save", Verdict::Admitted, Relation::Saved);
    // Changes of the tree.
    row(plain, "parse places edit", Verdict::Admitted, Relation::Apart);
    row(plain, "parse places edit save", Verdict::Admitted, Relation::Saved);
    row(plain, "parse places save edit", Verdict::Admitted, Relation::TagsAhead);
    row(plain, "parse places save parse edit", Verdict::Admitted, Relation::TagsAhead);
    row(plain, "parse places save edit erase", Verdict::Admitted, Relation::TagsAhead);
    row(plain, "parse places save edit save", Verdict::Admitted, Relation::Saved);
    row(plain, "parse places save edit declared", Verdict::Admitted, Relation::Apart);
    row(plain, "parse places save edit places", Verdict::Admitted, Relation::Apart);
    row(plain, "parse places save edit parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse places save edit change", Verdict::Admitted, Relation::Apart);
    row(plain, "parse places save edit write", Verdict::Unjudged, Relation::Apart);
    row(plain, "parse places save trial", Verdict::Admitted, Relation::TagsAhead);
    row(plain, "parse places save trial save", Verdict::Admitted, Relation::Saved);
    row(plain, "parse places trial", Verdict::Admitted, Relation::Apart);
    row(plain, "parse save change", Verdict::Admitted, Relation::Apart);
    row(plain, "parse save places", Verdict::Admitted, Relation::Saved);
    // A tree that somebody else has.
    row(plain, "parse save handout", Verdict::Admitted, Relation::Apart);
    row(plain, "parse handout save", Verdict::Admitted, Relation::Apart);
    row(plain, "parse handout parse", Verdict::Admitted, Relation::Apart);
    row(plain, "parse places save edit handout", Verdict::Admitted, Relation::Apart);
    row(plain, "parse places handout save edit", Verdict::Admitted, Relation::Apart);
    // Frames.
    row(plain, "parse places frame", Verdict::Admitted, Relation::Saved);
    row(plain, "parse places frame parse", Verdict::Admitted, Relation::SavedAndParsed);
    row(plain, "parse places badframe", Verdict::FrameRefused, Relation::Saved);
    row(plain, "parse places badframe frame", Verdict::Admitted, Relation::Saved);
    row(plain, "parse places badframe save", Verdict::FrameRefused, Relation::Saved);
    row(plain, "parse places badframe edit", Verdict::FrameRefused, Relation::TagsAhead);
    row(plain, "parse places badframe edit save", Verdict::FrameRefused, Relation::Saved);
    row(plain, "parse places badframe declared", Verdict::FrameRefused, Relation::Apart);
    row(plain, "parse places badframe handout", Verdict::FrameRefused, Relation::Apart);
    row(plain, "parse places badframe parse", Verdict::Admitted, Relation::Parsed);
    row(withData, "parse places badframe parse", Verdict::Admitted, Relation::Parsed);
    row(withData, "parse places badframe edit parse parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse places badframe write", Verdict::Unjudged, Relation::Apart);
    row(plain, "parse places badframe write judge", Verdict::Admitted, Relation::Apart);
    row(plain, "parse places badframe write save", Verdict::FrameRefused, Relation::Saved);
    row(plain, "parse places badframe write parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse places badframe inplace parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse places badframe close parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse places handout badframe parse", Verdict::Admitted, Relation::Apart);
    // Writes that fail.
    row(plain, "parse close save", Verdict::Admitted, Relation::Parsed);
    row(plain, "close parse", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse readonly save", Verdict::Admitted, Relation::Parsed);
    row(plain, "parse places save close edit save", Verdict::Admitted, Relation::TagsAhead);
    row(plain, "parse places frame readonly badframe", Verdict::Admitted, Relation::TagsAhead);
    row(plain, "parse places frame close badframe reopen save", Verdict::FrameRefused,
        Relation::Saved);
    row(plain, "parse full save", Verdict::Unjudged, Relation::Apart);
    row(plain, "parse places save edit full save", Verdict::Unjudged, Relation::Apart);
    row(plain, "parse places save edit full save room save", Verdict::Admitted, Relation::Saved);
}

void AgreementTest::goesFromStateToState()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, steps);
    Title title(text);
    for (const QString &step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        happenings.at(step)(title);
    QTEST(title.agreement.verdict(), "verdict");
    QTEST(title.agreement.relation(), "relation");
}

// The text of a frame that follows another is put together from it, whatever came between that
// leaves the tags where they are.
void AgreementTest::keepsStartTagsOverFrames()
{
    Title title(plain);
    title.agreement.parse();
    title.findPlaces();
    for (const char *value : {"1", "22", "", "4444", "&<\"", "1"}) {
        title.showFrame(QString::fromLatin1(value), QString());
        QCOMPARE(title.text(), saved(title.tree));
        title.agreement.parse();
        QCOMPARE(title.agreement.relation(), Relation::SavedAndParsed);
    }
}

void AgreementTest::showsFrames()
{
    const std::vector<FrameStep> steps{{nullptr, QStringLiteral("f"), false}};
    for (const char *happening :
         {"", "judge", "parse", "detach", "places", "edit", "erase", "trial", "change", "write",
          "inplace", "save", "declared", "handout", "badframe", "close"}) {
        Title title(plain);
        title.agreement.parse();
        title.findPlaces();
        title.showFrame(QStringLiteral("f"), QString());
        QVERIFY(title.agreement.isShowing(steps));
        QVERIFY(!title.agreement.isShowing({{nullptr, QStringLiteral("f"), true}}));
        const QByteArray name(happening);
        if (!name.isEmpty())
            happenings.at(QString::fromLatin1(name))(title);
        const bool isKept = name.isEmpty() || name == "judge" || name == "parse" || name == "close";
        if (isKept)
            QVERIFY2(title.agreement.isShowing(steps), happening);
        else if (name != "detach")
            QVERIFY2(!title.agreement.isShowing(steps), happening);
    }
}

void AgreementTest::saysWhatIsWrong()
{
    Title title(broken);
    QVERIFY(title.agreement.error().isEmpty());
    title.agreement.parse();
    QVERIFY(!title.agreement.error().isEmpty());
    title.write(plain, 0);
    title.agreement.parse();
    title.findPlaces();
    QVERIFY(title.agreement.error().isEmpty());

    title.showFrame(QStringLiteral("bad"), QStringLiteral("too bad"));
    QCOMPARE(title.agreement.error(), QStringLiteral("too bad"));
    title.agreement.saveAsDeclared();
    QCOMPARE(title.agreement.error(), QStringLiteral("too bad"));
    title.agreement.setError(QStringLiteral("something else"));
    QCOMPARE(title.agreement.error(), QStringLiteral("something else"));
    title.agreement.setError(QString());
    QCOMPARE(title.agreement.error(), QStringLiteral("too bad"));
    title.agreement.parse();
    QVERIFY(title.agreement.error().isEmpty());
}

namespace {

QString contentAsParsed(const QByteArray &text)
{
    return contentOf(treeOf(text));
}

/// What text and tree are to be, worked out by parsing and saving everything.
class PlainWay
{
public:
    PlainWay(Title *title, const QByteArray &text) : m_title(title), m_text(text) {}

    /// Lets the title go through what has this name, and follows.
    void go(const QString &name)
    {
        const QDomDocument before = m_title->tree.cloneNode(true).toDocument();
        const QByteArray textBefore = m_text;
        const bool canWrite = m_title->isWritable();
        happenings.at(name)(*m_title);
        if (name == QLatin1String("parse"))
            parse();
        else if (name == QLatin1String("write") && canWrite)
            m_text = longer;
        else if (name == QLatin1String("break") && canWrite)
            m_text = broken;
        else if (name == QLatin1String("inplace"))
            m_text = plain + ' ';
        else if (name == QLatin1String("judge") && !m_isFrameText)
            judge();
        else if (name == QLatin1String("edit") || name == QLatin1String("erase"))
            edit(before, name == QLatin1String("edit"));
        else if (name == QLatin1String("change"))
            m_tree = contentOf(m_title->tree);
        else if (name.endsWith(QLatin1String("frame")) && !m_title->root().isNull())
            frame(before, name == QLatin1String("badframe"), canWrite);

        const bool isSave = name == QLatin1String("save") || name == QLatin1String("declared")
                || name.endsWith(QLatin1String("frame"));
        if (isSave && canWrite && !m_title->root().isNull())
            save(name == QLatin1String("declared"));
        else if (m_text != textBefore)
            m_isFrameText = false;
    }

    /// What is not as it should be; null when all is well.
    const char *difference() const
    {
        if (m_title->text() != m_text)
            return "the text";
        if (m_title->isReadable() && !(m_title->seek(0) && m_title->readAll() == m_text))
            return "what is read";
        if (contentOf(m_title->tree) != m_tree)
            return "the tree";
        if (isSaved() && m_text != saved(m_title->tree))
            return "saved";
        if (isParsed() && contentAsParsed(m_text) != contentOf(m_title->tree))
            return "parsed";
        const Verdict verdict = m_title->agreement.verdict();
        if (m_isFrameText != (verdict == Verdict::FrameRefused))
            return "the refusal of a frame";
        if (verdict == Verdict::Admitted && !admit(m_text).refusal.isEmpty())
            return "admitted";
        return nullptr;
    }

    bool isSaved() const { return m_title->agreement.isSaved(); }

    bool isParsed() const
    {
        const Relation relation = m_title->agreement.relation();
        return (relation == Relation::Parsed && !m_title->tree.isNull())
                || relation == Relation::SavedAndParsed;
    }

private:
    void judge()
    {
        const Admission admission = admit(m_text);
        if (admission.refusal.isEmpty())
            m_text = admission.text;
    }

    void parse()
    {
        // The text before the frame, or what saving the tree before it gives.
        if (m_isFrameText)
            m_text = m_before.contains(m_title->text()) ? m_title->text() : m_before.first();
        judge();
        m_tree = admit(m_text).refusal.isEmpty() ? contentAsParsed(m_text)
                                                 : contentOf(QDomDocument());
        m_isFrameInTree = false;
        m_isFrameText = false;
    }

    void edit(const QDomDocument &before, bool hasValue)
    {
        QDomElement element =
                m_title->places().back().findNode(before.documentElement()).toElement();
        if (hasValue)
            element.setAttribute(QStringLiteral("a"), QStringLiteral("new"));
        else
            element.removeAttribute(QStringLiteral("a"));
        m_tree = contentOf(before);
    }

    void frame(const QDomDocument &before, bool isRefused, bool canWrite)
    {
        if (isRefused && !m_isFrameInTree)
            m_before = {m_text, saved(before)};
        m_isFrameInTree = isRefused || (m_isFrameInTree && !canWrite);
        for (const SvgElement &place : m_title->places())
            place.setAttribute(before.documentElement(), QStringLiteral("a"),
                               isRefused ? QStringLiteral("bad") : QStringLiteral("f"));
        m_tree = contentOf(before);
    }

    void save(bool isAsDeclared)
    {
        m_isFrameText = m_isFrameInTree;
        QByteArray text;
        QTextStream stream(&text);
        stream.setCodec("UTF-8");
        m_title->tree.save(stream, 1,
                           isAsDeclared ? QDomNode::EncodingFromDocument
                                        : QDomNode::EncodingFromTextStream);
        stream.flush();
        m_text = text;
    }

    Title *m_title;
    QByteArray m_text;
    QString m_tree = contentOf(QDomDocument());
    bool m_isFrameInTree = false; // one that was refused, or not judged yet
    bool m_isFrameText = false;   // the text is a save of it
    QList<QByteArray> m_before;   // what may come back
};

/// Whether it needs an element.
bool needsPlaces(const QString &name)
{
    return name == QLatin1String("edit") || name == QLatin1String("erase")
            || name == QLatin1String("trial");
}

} // namespace

void AgreementTest::isThePlainWay_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("plain") << plain;
    QTest::newRow("CDATA and an instruction") << withData;
    QTest::newRow("style sheet") << withSheet;
    QTest::newRow("broken") << broken;
}

void AgreementTest::isThePlainWay()
{
    QFETCH(QByteArray, text);
    QStringList names;
    for (const auto &happening : happenings)
        names += happening.first;
    names.removeAll(QStringLiteral("full")); // what is left of the text then is anybody's guess
    names += QStringList{QStringLiteral("parse"), QStringLiteral("frame"), QStringLiteral("save"),
                         QStringLiteral("reopen")};
    int inStep = 0;
    for (quint32 seed = 0; seed < 2'000; ++seed) {
        QRandomGenerator random(seed);
        Title title(text);
        PlainWay plainWay(&title, text);
        QString story;
        for (int i = 0; i < 14; ++i) {
            const QString name = names.at(random.bounded(names.size()));
            // A tree is handed out for good, so in one sequence of four only.
            const bool isPossible = name == QLatin1String("handout") ? seed % 4 == 0
                                                                     : !title.root().isNull()
                            || (!needsPlaces(name) && name != QLatin1String("change"));
            if (!isPossible)
                continue;
            if (needsPlaces(name) || name.endsWith(QLatin1String("frame")))
                title.findPlaces();
            plainWay.go(name);
            story += name + QLatin1Char(' ');
            const char *const difference = plainWay.difference();
            QVERIFY2(!difference,
                     qPrintable(story + QLatin1String("-> ") + QString::fromLatin1(difference)));
            inStep += plainWay.isSaved() || plainWay.isParsed();
        }
    }
    QVERIFY(inStep > 1'000);
}

QTEST_APPLESS_MAIN(AgreementTest)

#include "tst_agreement.moc"
