#include "support/NamedComponent.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDate>
#include <QDeadlineTimer>
#include <QDirIterator>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QStack>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A row of the help page's tables: what is done, and by which keys.
struct Step
{
    QString name;
    QStringList strokes; ///< a key as "Ctrl+S", or a text to type as "\"han\""
};

QString helpPage()
{
    QFile file(QStringLiteral(HELP_PAGE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return QString::fromUtf8(file.readAll());
}

std::vector<Step> stepsOnThePage()
{
    static const QRegularExpression row(
        u"<tr><td>([^<]*)</td><td>((?:<kbd>|<i>).*?)</td><td>.*?</td></tr>"_s);
    static const QRegularExpression stroke(u"<kbd>(.*?)</kbd>|<i>(.*?)</i>"_s);
    std::vector<Step> steps;
    for (const QRegularExpressionMatch &found : row.globalMatch(helpPage())) {
        Step step{found.captured(1), {}};
        for (const QRegularExpressionMatch &key : stroke.globalMatch(found.captured(2)))
            step.strokes += key.hasCaptured(2) ? u'"' + key.captured(2) : key.captured(1);
        steps.push_back(step);
    }
    return steps;
}

/// The key of a name as the page has it: "Ctrl+End", "Pil høyre", "Mellomrom", "F4", "Alt+O".
QKeyCombination keyNamed(const QString &name)
{
    static const std::map<QString, Qt::Key> names{
        {u"Tab"_s, Qt::Key_Tab},         {u"Enter"_s, Qt::Key_Return},
        {u"Escape"_s, Qt::Key_Escape},   {u"Mellomrom"_s, Qt::Key_Space},
        {u"Pil høyre"_s, Qt::Key_Right}, {u"End"_s, Qt::Key_End}};
    Qt::KeyboardModifiers modifiers;
    if (name.startsWith("Ctrl+"_L1))
        modifiers |= Qt::ControlModifier;
    if (name.startsWith("Alt+"_L1))
        modifiers |= Qt::AltModifier;
    const QString last = name.section(u'+', -1);
    const auto known = names.find(last);
    return QKeyCombination(modifiers,
                           known != names.end() ? known->second : QKeySequence(last)[0].key());
}

/// The component in a parent that knows names alone, on the demo company, with a user who has no
/// mouse. Keys go to the window that has them, as from the window system.
class KeyboardRoadTest : public ::testing::Test
{
protected:
    KeyboardRoadTest()
    {
        qputenv("HOME", QFile::encodeName(m_folder.path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.filePath(u"innstillinger"_s)));
        QApplication::setQuitOnLastWindowClosed(false);
        QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &m_watch,
                         [this](QWindow *window) {
                             if (!window)
                                 return;
                             m_had.removeAll(window);
                             m_had.push(window);
                         });
    }

    void start()
    {
        const QString file = m_folder.filePath(u"demo.db"_s);
        const QString year = QString::number(QDate::currentDate().year());
        ASSERT_EQ(QProcess::execute(QStringLiteral(HOST_FILE),
                                    {u"--demo"_s, u"--dsn"_s, file, u"--aar"_s, year}),
                  0);
        m_module = m_component.createInstance();
        ASSERT_EQ(NamedComponent::start(*m_module, u"dsn="_s + file, 1, year.toInt()), 1);
    }

    /// The window that keys go to. Without a window manager nobody hands the keyboard back when a
    /// window closes, so it goes to the one that had it before.
    QWindow *keyWindow()
    {
        if (QGuiApplication::focusWindow())
            return QGuiApplication::focusWindow();
        while (!m_had.isEmpty() && (!m_had.top() || !m_had.top()->isVisible()))
            m_had.pop();
        if (!m_had.isEmpty())
            m_had.top()->requestActivate();
        return QGuiApplication::focusWindow();
    }

    /// Presses the strokes of all steps, each in its turn of the event loop, since a dialog has a
    /// loop of its own, and only when the step before has done what it is for.
    void walk(const std::vector<Step> &steps)
    {
        m_steps = steps;
        QTimer::singleShot(0, &m_watch, [this] { goOn(); });
        while (!isDone())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    static QString where()
    {
        const QWidget *window = QApplication::activeWindow();
        const QWidget *focus = QApplication::focusWidget();
        return (window ? window->objectName() : u"no window"_s) + u'/' +
               (focus ? focus->objectName() : u"nothing"_s);
    }
    static bool isIn(const QString &window)
    {
        return QApplication::activeWindow() && QApplication::activeWindow()->objectName() == window;
    }
    /// Of the screen that is being used.
    template<class Control = QWidget>
    static Control *control(const QString &name)
    {
        QWidget *window = QApplication::activeWindow();
        return window ? window->findChild<Control *>(name) : nullptr;
    }
    static bool hasFocus(const QString &name)
    {
        const auto *wanted = control(name);
        return wanted && (wanted->hasFocus() || wanted->isAncestorOf(QApplication::focusWidget()));
    }
    static bool isEnabled(const QString &button)
    {
        return control(button) && control(button)->isEnabled();
    }
    static QString fieldText(const QString &name)
    {
        const auto *field = control<QLineEdit>(name);
        return field ? field->text() : QString();
    }
    static QString activeCell(const QString &grid, int col)
    {
        const auto *view = control<QTableView>(grid);
        return view ? view->currentIndex().siblingAtColumn(col - 1).data().toString() : QString();
    }
    bool isSaved(const QString &pattern) const
    {
        return QDirIterator(m_folder.path(), {pattern}, QDir::Files, QDirIterator::Subdirectories)
            .hasNext();
    }
    static bool isMenuAlone()
    {
        return isIn(u"frmRegningsdel"_s) &&
               std::ranges::none_of(QApplication::topLevelWidgets(), [](QWidget *w) {
                   return w->isVisible() && w->isWindow() && w->objectName().startsWith("frm"_L1) &&
                          w->objectName() != "frmRegningsdel"_L1;
               });
    }

    std::map<QString, std::function<bool()>> results();

private:
    /// The file dialog's own buttons, of which one is always down.
    static bool isFlat(const QAbstractButton &button)
    {
        const auto *tool = qobject_cast<const QToolButton *>(&button);
        return tool && tool->autoRaise();
    }
    /// A button that is pressed by a key acts when it comes up.
    static bool isAnyButtonDown()
    {
        const QWidgetList widgets = QApplication::allWidgets();
        return std::ranges::any_of(widgets, [](const QWidget *widget) {
            const auto *button = qobject_cast<const QAbstractButton *>(widget);
            return button && button->isDown() && button->isVisible() && !isFlat(*button);
        });
    }
    static void press(QWindow &window, const QString &stroke)
    {
        if (!stroke.startsWith(u'"')) {
            const QKeyCombination key = keyNamed(stroke);
            QTest::keyClick(&window, key.key(), key.keyboardModifiers());
            return;
        }
        for (const QChar letter : stroke.mid(1))
            QTest::sendKeyEvent(QTest::Click, &window, Qt::Key(letter.toUpper().unicode()),
                                QString(letter), Qt::NoModifier);
    }

    [[nodiscard]] bool isDone() const { return m_step == m_steps.size(); }

    void goOn()
    {
        constexpr int kTurn = 5; // milliseconds
        QTimer::singleShot(kTurn, &m_watch, [this] { goOn(); });
        if (!isDone() && m_deadline.hasExpired()) {
            ADD_FAILURE() << "stands at: " << m_steps[m_step].name.toStdString() << ", stroke "
                          << m_stroke << ", in " << where().toStdString();
            m_step = m_steps.size();
        }
        if (QWidget *dialog = QApplication::activeModalWidget(); isDone() && dialog)
            dialog->close();
        if (isDone() || isAnyButtonDown())
            return;
        const Step &step = m_steps[m_step];
        if (m_stroke == step.strokes.size()) {
            if (m_results.empty())
                m_results = results();
            if (!m_results.at(step.name)())
                return;
            ++m_step;
            m_stroke = 0;
            return;
        }
        QWindow *window = keyWindow();
        // A window that has just come up has the keyboard one turn later.
        if (!window || window != std::exchange(m_steady, window))
            return;
        m_steady = nullptr;
        press(*window, step.strokes[m_stroke++]);
    }

    QTemporaryDir m_folder;
    NamedComponent m_component;
    std::unique_ptr<QObject> m_module;
    QStack<QPointer<QWindow>> m_had; ///< the windows that keys went to, the last on top
    QObject m_watch;                 ///< ends what is connected and waits, with this test
    std::vector<Step> m_steps;
    std::map<QString, std::function<bool()>> m_results;
    QWindow *m_steady = nullptr; ///< had the keys in the turn before
    QDeadlineTimer m_deadline{120000};
    size_t m_step = 0;
    qsizetype m_stroke = 0;
};

/// What each step of the page is for, by its name there.
std::map<QString, std::function<bool()>> KeyboardRoadTest::results()
{
    const auto in = [](const QString &window) { return [window] { return isIn(window); }; };
    const QString today = QDate::currentDate().toString(u"dd.MM.yyyy");
    const auto menu = [] { return isMenuAlone(); };
    return {
        {u"Åpne innstillingene"_s, in(u"frmOptions"_s)},
        {u"Slå på forhåndsvisning"_s, menu},
        {u"Åpne ordrebildet"_s, in(u"frmOrdre"_s)},
        {u"Begynn en ny ordre"_s,
         [] { return hasFocus(u"txtFields_18"_s) && isEnabled(u"btnSave"_s); }},
        {u"Åpne kundelisten"_s, in(u"frmKunder"_s)},
        {u"Finn kunden"_s, [] { return activeCell(u"fpSpread1"_s, 2).startsWith("Troms"_L1); }},
        {u"Velg kunden"_s, [] { return fieldText(u"txtFields_0"_s).startsWith("Troms"_L1); }},
        {u"Gå til linjene"_s, [] { return hasFocus(u"vaSpread1"_s); }},
        {u"Velg et produkt"_s, [] { return activeCell(u"vaSpread1"_s, 1).startsWith(u'T'); }},
        {u"Skriv antallet"_s, [] { return !activeCell(u"vaSpread1"_s, 6).isEmpty(); }},
        {u"Gå ut av linjene"_s, [] { return isIn(u"frmOrdre"_s) && !hasFocus(u"vaSpread1"_s); }},
        {u"Velg forfallsdato i kalenderen"_s,
         [] { return hasFocus(u"txtFields_13"_s) && !QApplication::activePopupWidget(); }},
        {u"Lagre ordren"_s, [] { return isEnabled(u"btnPrint"_s) && !isEnabled(u"btnSave"_s); }},
        {u"Åpne utskrift"_s, in(u"frmUtskrift"_s)},
        {u"Skriv fakturaen"_s, in(u"Forhandsvisning"_s)},
        {u"Lagre den som PDF"_s,
         [this] { return isSaved(u"Faktura-*.pdf"_s) && isIn(u"Forhandsvisning"_s); }},
        {u"Lukk forhåndsvisningen"_s, [this] { return keyWindow() && isIn(u"frmOrdre"_s); }},
        {u"Lukk ordrebildet"_s, [this, menu] { return keyWindow() && menu(); }},
        {u"Åpne oversikten"_s, in(u"frmOversikt"_s)},
        {u"Sorter etter navn"_s,
         [] {
             const auto *grid = control<QTableView>(u"fpSpread1"_s);
             return grid && grid->horizontalHeader()->sortIndicatorSection() == 2;
         }},
        {u"Les listen på nytt"_s,
         [] {
             const auto *grid = control<QTableView>(u"fpSpread1"_s);
             return grid && !grid->horizontalHeader()->isSortIndicatorShown();
         }},
        {u"Finn fakturaen"_s, [] { return activeCell(u"fpSpread1"_s, 1).startsWith("10"_L1); }},
        {u"Åpne fakturaen"_s, in(u"frmOrdre"_s)},
        {u"Lag en EHF-fil"_s,
         [this] { return isSaved(u"*-10*.xml"_s) && keyWindow() && isIn(u"frmOrdre"_s); }},
        {u"Lukk fakturaen og oversikten"_s, [this, menu] { return keyWindow() && menu(); }},
        {u"Åpne bokføringen"_s, in(u"frmBokfor"_s)},
        {u"Merk den siste fakturaen"_s, [] { return isEnabled(u"btnTransfer"_s); }},
        {u"Bokfør"_s,
         [] {
             const auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
             return box && box->text() == u" 1 faktura er bokført."_s;
         }},
        {u"Lukk meldingen"_s,
         [] {
             const QWidgetList windows = QApplication::topLevelWidgets();
             return isIn(u"Forhandsvisning"_s) &&
                    std::ranges::count_if(windows, [](const QWidget *window) {
                        return window->objectName() == "Forhandsvisning"_L1 && window->isVisible();
                    }) == 2;
         }},
        {u"Lukk journalene"_s, [this] { return keyWindow() && isIn(u"frmBokfor"_s); }},
        {u"Lukk bokføringen"_s, [this, menu] { return keyWindow() && menu(); }},
        {u"Åpne produktregisteret"_s, in(u"frmProdukt"_s)},
        {u"Finn produktet"_s, [] { return activeCell(u"vaSpread1"_s, 1).startsWith(u'T'); }},
        {u"Åpne detaljene"_s, [] { return isEnabled(u"btnChange"_s); }},
        {u"Endre"_s, [] { return isEnabled(u"btnSave"_s); }},
        {u"Skriv en ny salgspris"_s, [] { return fieldText(u"txtFields_5"_s) == "500"_L1; }},
        {u"Lagre produktet"_s, [] { return isIn(u"frmProdukt"_s) && !isEnabled(u"btnSave"_s); }},
        {u"Vis hjelpen"_s, in(u"HtmlHelp"_s)},
        {u"Lukk hjelpen"_s, [this] { return keyWindow() && isIn(u"frmProdukt"_s); }},
        {u"Lukk produktregisteret"_s, [this, menu] { return keyWindow() && menu(); }},
    };
}

TEST_F(KeyboardRoadTest, EveryStepOfTheHelpPageWorks)
{
    const std::vector<Step> steps = stepsOnThePage();
    const auto known = results();
    EXPECT_EQ(steps.size(), known.size());
    for (const Step &step : steps)
        ASSERT_TRUE(known.contains(step.name)) << step.name.toStdString();
    start();
    walk(steps);
}

} // namespace
