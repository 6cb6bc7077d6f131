#include "platform/forms/OuterRim.h"

#include "runtime/RunTimeError.h"
#include "support/TestApplication.h"

#include <QMessageBox>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// The text of the message box that comes up next, which is closed.
QString &boxText()
{
    static QString text;
    text.clear();
    onNextModal<QMessageBox>([](QMessageBox &box) {
        text = box.text();
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        box.reject();
    });
    return text;
}

class OuterRim : public FormsFixture
{
};

} // namespace

TEST_F(OuterRim, AnUntrappedErrorBecomesAMessageWithNumberAndText)
{
    QPushButton button;
    onEvent(&button, &QPushButton::clicked, &button,
            [] { throw RunTimeError(13, u"Typene stemmer ikke"_s); });
    const QString &text = boxText();
    button.click();
    EXPECT_EQ(text, u"Kjørefeil 13:\n\nTypene stemmer ikke"_s);
}

TEST_F(OuterRim, AnyOtherExceptionStopsHereToo)
{
    QPushButton button;
    onEvent(&button, &QPushButton::clicked, &button, [] { throw std::runtime_error("tomt"); });
    const QString &text = boxText();
    button.click();
    EXPECT_EQ(text, u"Intern feil:\n\ntomt"_s);
}

TEST_F(OuterRim, AHandlerTakesAllArgumentsOrNone)
{
    QPushButton button;
    button.setCheckable(true);
    int calls = 0;
    bool state = false;
    onEvent(&button, &QPushButton::toggled, &button, [&](bool checked) { state = checked; });
    onEvent(&button, &QPushButton::toggled, &button, [&] { ++calls; });
    button.setChecked(true);
    EXPECT_TRUE(state);
    EXPECT_EQ(calls, 1);
}

TEST_F(OuterRim, TheConnectionEndsWithItsContext)
{
    QPushButton button;
    int calls = 0;
    {
        const QObject context;
        onEvent(&button, &QPushButton::clicked, &context, [&] { ++calls; });
        button.click();
    }
    button.click();
    EXPECT_EQ(calls, 1);
}

TEST_F(OuterRim, TellsWhetherTheHandlerGotThrough)
{
    EXPECT_TRUE(atOuterRim([] {}));
    boxText();
    EXPECT_FALSE(atOuterRim([] { throw RunTimeError(5); }));
}
