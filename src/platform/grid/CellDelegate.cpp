#include "platform/grid/CellDelegate.h"

#include "platform/grid/ComboEditor.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QToolTip>
#include <QValidator>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr char kLoadedText[] = "loadedText";
constexpr qsizetype kMostShown = 1000; ///< characters; more than that is far beyond any column

/// Lets only such characters in as can stand in a cell of the type. Text that comes from elsewhere
/// is put in one line; line ends behind it fall away.
class CellCharacters : public QValidator
{
public:
    CellCharacters(const CellType &type, QObject *parent) : QValidator(parent), m_type(type) {}

    [[nodiscard]] const CellType &type() const { return m_type; }

    State validate(QString &input, int &cursor) const override
    {
        while (input.endsWith(u'\n') || input.endsWith(u'\r'))
            input.chop(1);
        CellDelegate::putInOneLine(input);
        cursor = std::min(cursor, int(input.size()));
        if (!m_type.isNumber())
            return Acceptable;
        for (const QChar c : std::as_const(input)) {
            if (!m_type.takesCharacter(c))
                return Invalid;
        }
        return Acceptable;
    }

private:
    CellType m_type;
};

bool leavesCell(const QKeyEvent &key, const QWidget &editor)
{
    if (CellDelegate::leavesGrid(key.key(), key.modifiers()))
        return true;
    if ((key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0)
        return false;
    switch (key.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return qobject_cast<const QLineEdit *>(&editor) != nullptr;
    default:
        return false;
    }
}

/// The decimal key of the number pad types the cell's own decimal sign, whatever the keyboard has
/// on it. Returns whether `key` was that key in a number with decimals.
bool typesDecimalSign(const QKeyEvent &key, QWidget &editor)
{
    auto *box = qobject_cast<QLineEdit *>(&editor);
    if (box == nullptr || !key.modifiers().testFlag(Qt::KeypadModifier) ||
        (key.text() != "."_L1 && key.text() != ","_L1))
        return false;
    const auto *characters = dynamic_cast<const CellCharacters *>(box->validator());
    if (characters == nullptr || !characters->type().isNumber() || characters->type().decimals == 0)
        return false;
    box->insert(characters->type().decimalSign);
    return true;
}

/// The pixels that a cell has for its text.
int textRoom(const QStyleOptionViewItem &cell)
{
    const QStyle *style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, cell.widget) + 1;
    return std::max(0, cell.rect.width() - 2 * margin);
}

void paintCheck(QPainter *painter, const QStyleOptionViewItem &cell, bool marked, bool enabled)
{
    QStyle *style = cell.widget->style();
    QStyleOptionButton box;
    box.initFrom(cell.widget);
    // A dark desktop's box, filled with its ground, would read as marked on a light cell.
    if (cell.backgroundBrush.style() != Qt::NoBrush) {
        box.palette.setBrush(QPalette::Base, cell.backgroundBrush);
        box.palette.setBrush(QPalette::Text, cell.palette.text());
    }
    box.state = marked ? QStyle::State_On : QStyle::State_Off;
    if (enabled)
        box.state |= QStyle::State_Enabled;
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &box, cell.widget),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, &box, cell.widget));
    box.rect = QStyle::alignedRect(cell.direction, Qt::AlignCenter, size, cell.rect);
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, painter, cell.widget);
}

void paintArrow(QPainter *painter, const QStyleOptionViewItem &cell)
{
    const int side = std::min(cell.rect.height(), 16);
    QStyleOption arrow;
    arrow.initFrom(cell.widget);
    arrow.state |= QStyle::State_Enabled;
    arrow.rect = cell.rect.adjusted(cell.rect.width() - side - 2, 2, -2, -2);
    painter->fillRect(arrow.rect, cell.palette.button());
    arrow.rect.adjust(3, 3, -3, -3);
    cell.widget->style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter,
                                        cell.widget);
}

void paintFrame(QPainter *painter, const QStyleOptionViewItem &cell)
{
    const bool focused = cell.widget->hasFocus();
    const int width = focused ? 2 : 1;
    painter->save();
    painter->setPen(QPen(cell.palette.color(focused ? QPalette::Highlight : QPalette::Mid), width,
                         Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    const qreal inset = width / 2.0;
    painter->drawRect(QRectF(cell.rect).adjusted(inset, inset, -inset, -inset));
    painter->restore();
}

} // namespace

CellDelegate::CellDelegate(const Sheet &sheet, QObject *parent)
    : QStyledItemDelegate(parent), m_sheet(sheet)
{
}

void CellDelegate::putInOneLine(QString &text)
{
    text.replace("\r\n"_L1, " "_L1);
    for (QChar &c : text) {
        if (c == u'\t' || c == u'\n' || c == u'\r')
            c = u' ';
    }
}

bool CellDelegate::leavesGrid(int key, Qt::KeyboardModifiers modifiers)
{
    const Qt::KeyboardModifiers unshifted = modifiers & ~Qt::ShiftModifier;
    const bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    return (key == Qt::Key_F6 && !unshifted) || (tab && unshifted == Qt::ControlModifier);
}

QLineEdit *CellDelegate::textBox(QWidget *editor)
{
    if (auto *combo = qobject_cast<QComboBox *>(editor))
        return combo->lineEdit();
    return qobject_cast<QLineEdit *>(editor);
}

void CellDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const CellType &cellType = type(index);
    if (cellType.kind == CellKind::CheckBox) {
        option->features &=
            ~(QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay);
        option->text.clear();
    } else {
        option->text = cellType.shown(option->text);
        option->text.truncate(kMostShown); // laying out a text takes as long as the text is
        option->text.replace(QChar::LineSeparator, u' '); // a row has room for one line
    }
}

void CellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const auto *view = qobject_cast<const QAbstractItemView *>(cell.widget);
    const bool active = view != nullptr && view->currentIndex() == index;
    const bool framed = active && !m_activeCellFilled;
    cell.state &= ~QStyle::State_HasFocus;
    if (framed) { // the view has painted the selection under it
        cell.state &= ~QStyle::State_Selected;
        painter->fillRect(cell.rect, cell.palette.base());
    }
    const QStyle *style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
    // A number that is cut short reads as another number.
    if (type(index).isNumber() && cell.fontMetrics.horizontalAdvance(cell.text) > textRoom(cell))
        cell.text = QString(textRoom(cell) / cell.fontMetrics.horizontalAdvance(u'#'), u'#');
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    if (view == nullptr)
        return;

    const CellKind kind = type(index).kind;
    if (kind == CellKind::CheckBox) {
        paintCheck(painter, cell, index.data(Qt::CheckStateRole).toInt() == Qt::Checked,
                   index.flags().testFlag(Qt::ItemIsUserCheckable));
    } else if (kind == CellKind::ComboBox && active && index.flags().testFlag(Qt::ItemIsEditable)) {
        paintArrow(painter, cell);
    }
    if (framed)
        paintFrame(painter, cell);
}

bool CellDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                             const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const bool isCut = cell.fontMetrics.horizontalAdvance(cell.text) > textRoom(cell);
    QToolTip::showText(event->globalPos(), isCut ? cell.text : QString(), view, option.rect);
    return true;
}

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                    const QModelIndex &index) const
{
    const CellType &cellType = type(index);
    QWidget *editor = nullptr;
    if (cellType.kind == CellKind::ComboBox) {
        const QStringList items =
            cellType.items.isEmpty() ? QStringList() : cellType.items.split(u'\t');
        auto *combo = new ComboEditor(items, cellType.editable, parent);
        if (cellType.editable)
            combo->setValidator(new CellCharacters(cellType, combo));
        connect(combo, &ComboEditor::listClosed, this, &CellDelegate::finish);
        editor = combo;
    } else {
        auto *box = new QLineEdit(parent);
        box->setFrame(false);
        box->setValidator(new CellCharacters(cellType, box));
        // A text that the validator has altered would count as one that the program wrote.
        connect(box, &QLineEdit::textEdited, box, [box] { box->setModified(true); });
        editor = box;
    }
    const QString column = m_sheet.text(index.column() + 1, 0);
    editor->setAccessibleName(column);
    if (QLineEdit *box = textBox(editor)) {
        box->setAccessibleName(column);
        box->setAlignment(Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
    }
    QPalette palette = editor->palette();
    for (const auto &[role, painted] : {std::pair(Qt::BackgroundRole, QPalette::Base),
                                        std::pair(Qt::ForegroundRole, QPalette::Text)}) {
        const QVariant brush = index.data(role);
        if (brush.isValid())
            palette.setBrush(painted, brush.value<QBrush>());
    }
    editor->setPalette(palette);
    return editor;
}

void CellDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    const QString text = type(index).edited(index.data(Qt::EditRole).toString());
    if (editor->property(kLoadedText) == text)
        return;
    editor->setProperty(kLoadedText, text);
    if (auto *combo = qobject_cast<QComboBox *>(editor)) {
        combo->setCurrentIndex(combo->findText(text));
        if (combo->isEditable())
            combo->setEditText(text);
        else
            combo->setPlaceholderText(text);
    } else if (auto *box = qobject_cast<QLineEdit *>(editor)) {
        box->setText(text.trimmed());
    }
}

void CellDelegate::reload(QWidget *editor, const QModelIndex &index) const
{
    editor->setProperty(kLoadedText, QVariant());
    setEditorData(editor, index);
}

void CellDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                const QModelIndex &index) const
{
    const QString before = index.data(Qt::EditRole).toString();
    if (const auto *combo = qobject_cast<QComboBox *>(editor)) {
        if (!combo->isEditable() && combo->currentIndex() < 0)
            return;
        if (combo->currentText() != before)
            model->setData(index, combo->currentText(), Qt::EditRole);
    } else if (const auto *box = qobject_cast<QLineEdit *>(editor)) {
        if (box->isModified())
            model->setData(index, box->text(), Qt::EditRole);
    }
}

void CellDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                        const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}

bool CellDelegate::eventFilter(QObject *object, QEvent *event)
{
    auto *editor = qobject_cast<QWidget *>(object);
    if (editor != nullptr && event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (leavesCell(*key, *editor)) {
            const int pressed = key->key();
            const Qt::KeyboardModifiers modifiers = key->modifiers();
            finish(editor);
            Q_EMIT moveWanted(pressed, modifiers);
            return true;
        }
        if (typesDecimalSign(*key, *editor) || passesHistoryOn(*key, editor))
            return true;
    }
    return QStyledItemDelegate::eventFilter(object, event);
}

bool CellDelegate::passesHistoryOn(const QKeyEvent &key, QWidget *editor)
{
    const QLineEdit *box = textBox(editor);
    if (key.matches(QKeySequence::Undo) && (box == nullptr || !box->isUndoAvailable()))
        Q_EMIT undoWanted();
    else if (key.matches(QKeySequence::Redo) && (box == nullptr || !box->isRedoAvailable()))
        Q_EMIT redoWanted();
    else
        return false;
    return true;
}

void CellDelegate::finish(QWidget *editor)
{
    Q_EMIT commitData(editor);
    Q_EMIT closeEditor(editor, NoHint);
}
