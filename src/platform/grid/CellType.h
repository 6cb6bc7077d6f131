#pragma once

#include <QString>

#include <optional>

/// What kind of value a cell takes, by the grid's own numbers.
enum class CellKind : int {
    Date = 0,
    Edit = 1,
    Float = 2,
    Integer = 3,
    Time = 6,
    ComboBox = 8,
    CheckBox = 10,
};

/// The type of a cell with its attributes. A cell holds text whatever its type: numbers and dates
/// are kept in the form of the machine's locale, as Format writes them and toCurrency and toDate
/// read them. The type says what a user may type, how the text is shown, and by what it is sorted.
struct CellType
{
    CellKind kind = CellKind::Edit;

    /// Lowest and highest date that a user may type into a date cell; empty for no limit. No other
    /// kind has a range.
    QString minimum;
    QString maximum;

    /// Float and integer cells.
    bool showThousands = false;
    QChar thousandsSign = u' ';
    QChar decimalSign = u',';
    int decimals = 2;                 ///< 0 to 4; an integer cell has none
    std::optional<int> shownDecimals; ///< of a cell that is not being edited; none for all

    QChar timeSign = u':';

    /// Combo boxes: the items, parted by tabs, and whether other text may be typed.
    QString items;
    bool editable = false;

    /// The type of that number without any attribute; error 5 for a number that is no type.
    [[nodiscard]] static CellType ofNumber(int number);

    [[nodiscard]] bool isNumber() const
    {
        return kind == CellKind::Float || kind == CellKind::Integer;
    }
    /// How the cell's text stands in the cell: a number with the cell's own signs; a text that is
    /// no number as it is.
    [[nodiscard]] QString shown(const QString &text) const;
    /// How it stands there while it is edited: a number with all its decimals.
    [[nodiscard]] QString edited(const QString &text) const;
    /// The text to keep when a user has typed `typed`; nothing when the type refuses it. Empty text
    /// is always taken.
    [[nodiscard]] std::optional<QString> accepted(const QString &typed) const;
    /// Whether the character may stand in a number of this type. A point may, whatever the decimal
    /// sign: kept out it would make 125 of 1.25. `accepted` judges the whole by the machine's form.
    [[nodiscard]] bool takesCharacter(QChar c) const;

    friend bool operator==(const CellType &, const CellType &) = default;

private:
    [[nodiscard]] QString written(const QString &text, int digits) const;
};
