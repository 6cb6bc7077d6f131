#include "desk/DeskTest.h"

#include "desk/Desk.h"

#include <QApplication>
#include <QPointer>
#include <QProcess>
#include <QRegularExpression>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QVariant>
#include <QWindow>

#include <chrono>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 10000; // milliseconds, for a machine with much to do
constexpr std::chrono::milliseconds kGlance{10};

const Desk *theDesk = nullptr;

QWidget *visible(const QString &name, const QWidget *window)
{
    for (QWidget *widget : QApplication::allWidgets()) {
        if (widget->objectName() == name && widget->isVisible() &&
            (window ? widget->window() == window : widget->isWindow()))
            return widget;
    }
    return nullptr;
}

/// Counts the keys that the windows get.
class KeyCount : public QObject
{
public:
    KeyCount() { qApp->installEventFilter(this); }

    int presses = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched->isWindowType() && event->type() == QEvent::KeyPress)
            ++presses;
        return false;
    }
};

void xdotool(const QStringList &arguments)
{
    EXPECT_EQ(QProcess::execute(u"xdotool"_s, arguments), 0) << arguments.join(u' ').toStdString();
    QCoreApplication::processEvents();
}

} // namespace

void DeskTest::SetUp()
{
    if (display().isEmpty())
        GTEST_SKIP() << reason();
    qputenv("XDG_CONFIG_HOME", path(u"innstillinger"_s).toUtf8());
    const QString database = makeDemo();
    m_module = m_component.createInstance();
    ASSERT_EQ(NamedComponent::start(*m_module, u"dsn="_s + database, 1, 2014), 1);
    window(u"frmRegningsdel"_s);
}

void DeskTest::awaitManager()
{
    if (theDesk->display().isEmpty())
        return;
    static_cast<void>(comes([] {
        return look(u"xprop"_s, {u"-root"_s, u"_NET_SUPPORTING_WM_CHECK"_s}).contains("window id");
    }));
}

bool DeskTest::comes(const std::function<bool()> &state)
{
    return QTest::qWaitFor(state, kPatience);
}

QWidget &DeskTest::window(const QString &name)
{
    QWidget *found = nullptr;
    const bool came = comes([&] {
        found = visible(name, nullptr);
        return found && found->windowHandle() && found->windowHandle()->isExposed();
    });
    if (!came)
        throw std::runtime_error("no window " + name.toStdString());
    return *found;
}

QWidget &DeskTest::control(const QWidget &window, const QString &name)
{
    QWidget *found = visible(name, &window);
    if (!found)
        throw std::runtime_error(window.objectName().toStdString() + " has no control " +
                                 name.toStdString());
    return *found;
}

void DeskTest::inModal(const QString &name, const std::function<void()> &opens,
                       const std::function<void(QWidget &)> &does)
{
    bool done = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        const QPointer<QWidget> found = visible(name, nullptr);
        if (!found)
            return;
        watch.stop();
        does(window(name));
        if (found && found->isVisible())
            found->close();
        done = true;
    });
    watch.start(kGlance);
    opens();
    EXPECT_TRUE(comes([&] { return done; })) << name.toStdString();
}

QString DeskTest::text(const QWidget &control)
{
    return control.property("text").toString();
}

void DeskTest::point(const QWidget &control, QPoint place)
{
    const QPoint there = control.mapToGlobal(place);
    xdotool({u"mousemove"_s, QString::number(there.x()), QString::number(there.y())});
}

void DeskTest::press(int button)
{
    xdotool({u"click"_s, QString::number(button)});
}

void DeskTest::click(const QWidget &control, int button)
{
    clickAt(control, control.rect().center(), button);
}

void DeskTest::clickAt(const QWidget &control, QPoint place, int button)
{
    point(control, place);
    press(button);
}

void DeskTest::clickTab(const QWidget &tabs, int number)
{
    const auto &bar = *tabs.findChild<QTabBar *>();
    clickAt(bar, bar.tabRect(number - 1).center());
}

void DeskTest::doubleClick(const QWidget &control)
{
    point(control, control.rect().center());
    xdotool({u"click"_s, u"--repeat"_s, u"2"_s, u"--delay"_s, u"20"_s, u"1"_s});
}

void DeskTest::key(const QString &name)
{
    xdotool({u"key"_s, name});
}

void DeskTest::hold(const QString &name, int times)
{
    const KeyCount count;
    xdotool({u"keydown"_s, name});
    EXPECT_TRUE(comes([&] { return count.presses >= times; }));
    xdotool({u"keyup"_s, name});
}

void DeskTest::type(const QString &text)
{
    xdotool({u"type"_s, u"--"_s, text});
}

QString DeskTest::property(const QWidget &window, const QString &name)
{
    const QByteArray line = look(u"xprop"_s, {u"-id"_s, QString::number(window.winId()), name});
    return QString::fromUtf8(line).trimmed();
}

QStringList DeskTest::stack()
{
    static const QRegularExpression number(u"0x[0-9a-f]+"_s);
    const QString line =
        QString::fromUtf8(look(u"xprop"_s, {u"-root"_s, u"_NET_CLIENT_LIST_STACKING"_s}));
    QStringList names;
    for (const QRegularExpressionMatch &match : number.globalMatch(line)) {
        const WId id = match.captured().toULongLong(nullptr, 16);
        const QWidget *window = QWidget::find(id);
        if (window)
            names += window->objectName();
    }
    return names;
}

QString DeskTest::display()
{
    return QString::fromLatin1(theDesk->display());
}

std::string DeskTest::reason()
{
    return theDesk->reason().toStdString();
}

QByteArray DeskTest::look(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(kPatience)) << program.toStdString();
    return process.readAllStandardOutput();
}

// The listing of the tests, when the tree is built, needs no desk.
int main(int argc, char *argv[])
{
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    const Desk desk;
    theDesk = &desk;
    qputenv("QT_QPA_PLATFORM", desk.display().isEmpty() ? "offscreen" : "xcb");
    QApplication application(argc, argv);
    QApplication::setStyle(u"Fusion"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    DeskTest::awaitManager();
    return RUN_ALL_TESTS();
}
