#pragma once

#include <QAbstractButton>
#include <QPointer>
#include <QWidget>

#include <vector>

class QEventLoop;
class ScrolledPage;

/// Why a form is asked to close.
enum class UnloadMode {
    User = 0,       ///< the close box or the window menu
    Code = 1,       ///< Form::unload
    LoggingOff = 2, ///< the user logs off or the machine shuts down
};

/// What a form is among the windows of the desktop, which screen readers tell as well.
enum class FormKind {
    Screen, ///< stands by itself
    Dialog, ///< belongs to the window from which it is opened, and stands over it
    Note,   ///< a dialog that tells something; screen readers read it out
};

/// The three states of a form's window, with the platform's numbers.
enum class FormState { Normal = 0, Minimised = 1, Maximised = 2 };

/// A screen: a top-level window with the life that the module's screens are written for.
///
///     made -> load -> (shown) resize, activate -> activate ... -> queryUnload -> unload -> gone
///
/// - `onLoad` runs once, before the form is first shown, or when `load` asks for it. From then
///   until it is unloaded the form stands in `Forms`.
/// - `onActivate` runs before the call that shows the form returns, and each time it becomes the
///   program's active form again after another *form*. Message boxes, file and print dialogs, the
///   parent's windows and other programs do not count.
/// - `onKeyDown` sees every key ahead of the control that has the focus.
/// - A push button that is pressed by a key takes the focus like one that is clicked, so that the
///   field or cell being typed in is left ahead of the command.
/// - `unload` asks `onQueryUnload`, runs `onUnload`, takes the form out of `Forms` and deletes it
///   as soon as all running event handlers have returned.
///
/// A run-time error that leaves one of these handlers becomes a message box and stops there.
///
/// Forms are made by `SharedForm` or by `new`, never on the stack; they own themselves. The object
/// name is the form's name. Places are in twips: left and top are those of the window with its
/// frame, width and height those of its inner area, so that a place that was read gives the same
/// window again under any window manager.
class Form : public QWidget
{
    Q_OBJECT

public:
    explicit Form(const QString &name, FormKind kind = FormKind::Screen);
    ~Form() override;

    /// Runs `onLoad` and enters the form in `Forms`; does nothing on a loaded form.
    void load();
    [[nodiscard]] bool isLoaded() const { return m_life == Life::Loaded; }
    /// True from the moment the form is unloaded until it is deleted.
    [[nodiscard]] bool isUnloaded() const { return m_life == Life::Unloaded; }

    /// Shows the form (loading it first) without modality, a dialog over the window that is active
    /// then, a screen without an owner; one that is on screen already comes up again, out of the
    /// task bar if need be. QWidget::show and its kin all come here.
    void setVisible(bool visible) override;
    /// Shows the form so that no other window of the program can be used, and returns when it has
    /// been hidden or unloaded; it may be deleted by then. Error 400 when it is visible already.
    void showModal();
    /// Unloads the form. Returns false when `onQueryUnload` cancelled it.
    bool unload(UnloadMode mode = UnloadMode::Code);
    /// Puts the window on top of the others without giving it the focus ("ZOrder"); also above a
    /// form that has just been shown, which the window system brings up in its own time.
    void bringToFront();

    [[nodiscard]] FormState state() const;
    void setState(FormState state);

    /// Place and size in twips.
    [[nodiscard]] QRect place() const;
    /// Moves and sizes in one step; a size below the minimum becomes the minimum, a side longer
    /// than 150,000 twips (on no screen) becomes that.
    void setPlace(int left, int top, int width, int height);
    /// The smallest size in twips; a smaller window grows to it at once.
    void setMinimumTwips(int width, int height);
    /// The size in pixels of what the controls stand on: the inner area of the window, which on a
    /// screen without room for it shows a part and scrolls the rest into view.
    [[nodiscard]] QSize pageSize() const;
    /// Puts the window in the middle of its screen.
    void centreOnScreen();

    /// The button that Enter presses when the focus is in no other button, and the one that Escape
    /// presses; both work only while the button can be clicked. Null for none.
    void setDefaultButton(QAbstractButton *button);
    void setCancelButton(QAbstractButton *button) { m_cancelButton = button; }
    /// The key presses the button wherever the focus is, like the letter that a caption has for
    /// Alt, and tells of itself in the tool tip of a button that has none.
    void setCommandKey(QKeyCombination key, QAbstractButton *button);

protected:
    virtual void onLoad() {}
    virtual void onActivate() {}
    /// The page has a new size; also once before the form is first seen.
    virtual void onResize() {}
    /// May set `cancel` to keep the form. May itself call `unload`.
    virtual void onQueryUnload(bool &cancel, UnloadMode mode);
    virtual void onUnload() {}
    /// Returns true to keep the key from the controls.
    virtual bool onKeyDown(Qt::Key key, Qt::KeyboardModifiers shift);

    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    /// A control that is disabled under the user's hands passes the focus back, not on.
    bool focusNextPrevChild(bool next) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    /// Has a screen reader read out what the form tells, wherever the focus is.
    void announce(const QString &text);
    /// Puts a dialog over the middle of the window that it belongs to.
    void centreOverOwner();

private:
    friend class Forms;

    enum class Life { Made, Loaded, Unloading, Unloaded };

    struct CommandKey
    {
        QKeyCombination key;
        QPointer<QAbstractButton> button;
    };

    void scrollOnSmallScreen();
    void belongToActiveWindow();
    void comeBackOnScreen();
    void becomeActive();
    bool previewKey(QKeyEvent *event);
    bool pressCommand(QKeyCombination key);

    const FormKind m_kind;
    Life m_life = Life::Made;
    bool m_asking = false;
    /// The window system's report of the activation that setVisible has already told about is
    /// still to come.
    bool m_activationTold = false;
    QPointer<Form> m_inFront; ///< comes to the front again when that report is there
    QEventLoop *m_modalLoop = nullptr;
    ScrolledPage *m_scrolled = nullptr; ///< none where the screen has room for the form
    QPointer<QAbstractButton> m_defaultButton;
    QPointer<QAbstractButton> m_cancelButton;
    std::vector<CommandKey> m_commandKeys;
};
