#pragma once

#include <QKeyCombination>
#include <QStringList>
#include <QWidget>

#include <exception>
#include <functional>
#include <utility>
#include <vector>

namespace screentour {

/// A screen was not as the one who goes through it expects it: one Norwegian line.
class ScreenError : public std::exception
{
public:
    explicit ScreenError(QString line) : m_line(std::move(line)) {}

    [[nodiscard]] const QString &line() const noexcept { return m_line; }

private:
    QString m_line;
};

/// The hands and eyes of a user on a screen, whose widgets are found by name.
///
/// A stop of the tour (host/tour/stops/Stops.h) gets the guide and looks like this:
///
///     QWidget &menu = guide.window(u"frmRegningsdel"_s);
///     guide.click(guide.control(menu, u"Command2"_s));
///     QWidget &screen = guide.window(u"frmProdukt"_s);
///     guide.type(guide.control(screen, u"txtFields_1"_s), u"Kjøring"_s);
///     guide.picture(screen, u"produkt"_s, u"Produktregisteret"_s);
///     guide.close(screen);
///
/// The screens belong to the component, which has classes of its own: a stop knows their names and
/// Qt's classes, and includes nothing of the module. Everything here raises ScreenError when the
/// screen is not as the stop expects it. References to widgets hold as long
/// as the screen that they are in.
class Guide
{
public:
    using Action = std::function<void()>;
    using Say = std::function<void(const QString &line)>;

    /// Pictures are saved in `folder`, which is there, and told through `say`, which must outlive
    /// the guide.
    Guide(QString folder, const Say &say);

    /// Where the tour leaves its pictures and files.
    [[nodiscard]] const QString &folder() const { return m_folder; }

    // --- What is on the screen

    /// Waits for the visible window of that name.
    [[nodiscard]] static QWidget &window(const QString &name);
    /// The visible control of that name in the window. A control on a page that is not in front is
    /// not visible.
    [[nodiscard]] static QWidget &control(const QWidget &window, const QString &name);
    /// The text of a grid's cell; rows and columns count from 1, as in the module.
    [[nodiscard]] static QString cell(const QWidget &grid, int row, int col);
    /// The first row of a grid whose cell in that column has that text.
    [[nodiscard]] static int rowOf(const QWidget &grid, int col, const QString &text);

    // --- What a user does

    /// Clicks in the middle of a control, or on the mark of a check box or option, and brings its
    /// window to the front. A control that is disabled ends the tour, here and below.
    void click(QWidget &control);
    /// Presses and releases a key in a control, as Qt::Key_F1 or Qt::CTRL | Qt::Key_S.
    void key(QWidget &control, QKeyCombination key);
    /// Clicks in a field, marks what stands there and types over it. Another field gets the focus,
    /// and the screen its look-ups and checks, by key(control, Qt::Key_Tab).
    void type(QWidget &control, const QString &text);
    /// Picks the item of that text from the list of a combo box.
    void choose(QWidget &combo, const QString &text);
    /// Brings a page of a tab strip to the front by a click on its tab.
    void chooseTab(QWidget &tabs, const QString &text);
    /// Clicks in a grid's cell, which is scrolled into view.
    void clickCell(QWidget &grid, int row, int col);
    void doubleClickCell(QWidget &grid, int row, int col);
    /// Edits a cell with F2, types over all that stands there and leaves it with Enter.
    void typeInCell(QWidget &grid, int row, int col, const QString &text);
    /// Picks the item of that text from the list of a combo cell and leaves the cell with Enter.
    void chooseInCell(QWidget &grid, int row, int col, const QString &text);
    /// Closes a window as its close box does, and waits for it to be gone.
    void close(QWidget &window);
    /// Waits for a window to be gone.
    static void expectClosed(const QString &name);

    /// Does what shows a note that goes by itself, maybe before this comes back, and takes it down
    /// when it still stands.
    void note(const QString &name, const Action &shows);

    // --- Windows that must be answered first

    /// Does what brings up a window that the module waits for (a picker, a dialog), and has
    /// `answers` deal with it, which must end with the window closed.
    void modal(const QString &name, const Action &opens,
               const std::function<void(QWidget &)> &answers);
    /// The same for a message box: presses its button of that text ("OK", "Ja", "Nei", "Avbryt").
    /// Returns what the box says. With a `picture` name the box is pictured first.
    QString answer(const QString &button, const Action &opens, const QString &picture = {});

    /// Presses a button that asks for a file's name, and answers with a name in the folder of the
    /// tour. A file of an earlier tour makes room.
    void saveAs(QWidget &button, const QString &name);

    // --- What is left of it

    struct Picture
    {
        QString file; ///< its name in the folder
        QString told;
    };

    /// Saves what the window shows now as the next numbered PNG file, "NN-name.png", and tells it.
    void picture(QWidget &window, const QString &name, const QString &told);
    /// All of them, in their order.
    [[nodiscard]] const std::vector<Picture> &pictures() const { return m_pictures; }

private:
    void perform(const Action &action);
    void typeText(const QString &text);

    const QString m_folder;
    const Say &m_say;
    std::vector<Picture> m_pictures;
    QStringList m_expected; ///< the windows that modal() waits for or deals with
};

} // namespace screentour
