#include "shell/component/Screens.h"

#include <QAccessible>
#include <QFile>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QRegularExpression>
#include <QTabBar>

#include <map>
#include <set>

using namespace Qt::StringLiterals;

namespace {

using Names = std::set<QString>;

/// The names in one cell of a table: `Command2`; `Text1`, `Text2`; `txtFields_0` to `txtFields_4`.
Names namesOf(const QString &cell)
{
    static const QRegularExpression quoted(u"`(\\w+)`(?: to `\\w+?(\\d+)`)?"_s);
    static const QRegularExpression number(u"\\d+$"_s);
    Names names;
    for (const QRegularExpressionMatch &match : quoted.globalMatch(cell)) {
        const QString first = match.captured(1);
        names.insert(first);
        if (!match.hasCaptured(2))
            continue;
        const QRegularExpressionMatch index = number.match(first);
        for (int i = index.captured().toInt() + 1; i <= match.captured(2).toInt(); ++i)
            names.insert(first.left(index.capturedStart()) + QString::number(i));
    }
    return names;
}

/// The names that docs/automation.md tells of each screen, in the table below the screen's own
/// name.
std::map<QString, Names> documentedNames()
{
    QFile file(QStringLiteral(AUTOMATION_PAGE));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    std::map<QString, Names> screens;
    QString screen;
    const QString page = QString::fromUtf8(file.readAll());
    for (const QString &line : page.mid(page.indexOf(u"\n## Screens"_s)).split(u'\n')) {
        if (line.startsWith(u'`'))
            screen = line.section(u'`', 1, 1);
        else if (line.startsWith(u"| `"))
            screens[screen].merge(namesOf(line.section(u'|', 1, 1)));
    }
    return screens;
}

/// Captions and the frames around controls, to which nothing is done.
bool isDecoration(const QWidget &widget)
{
    const QMetaObject *const kind = widget.metaObject();
    return kind == &QLabel::staticMetaObject || kind == &QFrame::staticMetaObject ||
           kind == &QGroupBox::staticMetaObject || kind == &QWidget::staticMetaObject;
}

/// What Qt makes a control of is named by Qt.
bool isPartOfControl(const QWidget &widget)
{
    return widget.objectName().startsWith(u"qt_") || qobject_cast<QTabBar *>(widget.parent());
}

/// What stands on a screen by name.
Names controlsOf(const QWidget &screen)
{
    Names names;
    for (const QWidget *widget : screen.findChildren<QWidget *>()) {
        if (!widget->objectName().isEmpty() && !isDecoration(*widget) && !isPartOfControl(*widget))
            names.insert(widget->objectName());
    }
    return names;
}

QStringList without(const Names &names, const std::function<bool(const QString &)> &known)
{
    QStringList rest;
    for (const QString &name : names) {
        if (!known(name))
            rest += name;
    }
    return rest;
}

class AutomationTest : public ModuleTest, public ::testing::WithParamInterface<Screen>
{
protected:
    void TearDown() override
    {
        unloadForms();
        runEvents();
    }
};

TEST_P(AutomationTest, ThePageNamesWhatIsThere)
{
    const std::unique_ptr<QWidget> screen = GetParam().make();
    EXPECT_EQ(screen->objectName(), GetParam().name);
    const Names documented = documentedNames()[GetParam().name];
    EXPECT_FALSE(documented.empty());

    const auto exists = [&](const QString &name) { return screen->findChild<QObject *>(name); };
    EXPECT_EQ(without(documented, exists), QStringList()) << "stand in docs/automation.md alone";
    const auto isDocumented = [&](const QString &name) { return documented.count(name) > 0; };
    EXPECT_EQ(without(controlsOf(*screen), isDocumented), QStringList())
        << "are not in docs/automation.md";
}

TEST_P(AutomationTest, WhatTakesTheFocusHasANameForAScreenReader)
{
    makeParentTables();
    ASSERT_EQ(startModule(), 1);
    const std::unique_ptr<QWidget> screen = GetParam().make();
    if (auto *form = qobject_cast<Form *>(screen.get()))
        form->load();
    for (QWidget *widget : screen->findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisibleTo(screen.get()))
            continue;
        const QAccessibleInterface *told = QAccessible::queryAccessibleInterface(widget);
        EXPECT_FALSE(told->text(QAccessible::Name).trimmed().isEmpty())
            << widget->metaObject()->className() << ' ' << widget->objectName().toStdString()
            << " in " << widget->parentWidget()->objectName().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, AutomationTest, ::testing::ValuesIn(kScreens),
                         [](const auto &screen) { return screen.param.name.toStdString(); });

TEST(AutomationPage, HasNoScreenThatDoesNotExist)
{
    Names screens;
    for (const Screen &screen : kScreens)
        screens.insert(screen.name);
    for (const auto &[name, controls] : documentedNames())
        EXPECT_EQ(screens.count(name), 1U) << name.toStdString();
}

} // namespace
