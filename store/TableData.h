#pragma once
// The columns behind a Table, as the database fills them.
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/Value.h"

namespace koben {

/// One column. Whole numbers, days and money start at 4 bytes a row and widen to 8 with the first value that needs it;
/// texts are numbered, each different text stands once.
class ColumnStore {
public:
    explicit ColumnStore(Type type) : m_type(type), m_layout(layoutOf(type)) {}

    void appendNull();
    void appendWhole(qint64 value);  ///< numbers and truth values; money as ten-thousandths
    void appendDate(DateTime value);
    void appendReal(double value);
    void appendText(std::string_view utf8);
    /// Converts to the column's type; a value of a strange kind (a file edited elsewhere) becomes the nearest.
    void append(const Value& value);

    bool isNull(size_t row) const;
    Value value(size_t row) const;
    qint64 integer(size_t row) const;
    int compare(size_t a, size_t b) const;
    std::string_view utf8(size_t row) const;
    /// For a column of texts: what stands higher has the higher number, equal texts the same; Null has 0.
    std::vector<quint32> ranks() const;
    bool isText() const { return m_layout == Layout::Text; }

private:
    enum class Layout : quint8 { Narrow, Wide, Float, Double, Text };
    static Layout layoutOf(Type type);
    void appendRaw(qint64 value);
    void widen();
    qint64 raw(size_t row) const;  ///< row must not be Null
    DateTime date(size_t row) const;
    quint32 numberOf(std::string_view utf8);
    void rehash();
    std::string_view entry(quint32 number) const;

    Type m_type;
    Layout m_layout;
    bool m_timed = false;  ///< Wide dates are seconds
    std::vector<qint32> m_narrow;
    std::vector<qint64> m_wide;
    std::vector<float> m_floats;
    std::vector<double> m_doubles;
    std::vector<quint32> m_numbers;  ///< text number of each row
    std::string m_arena;             ///< the different texts, one behind the other
    std::vector<size_t> m_ends;      ///< end of each text in the arena
    std::vector<quint32> m_slots;    ///< open addressing: text number + 1, 0 is free
};

/// The columns are shared and never change once filled; a removed row only leaves the order.
struct TableData {
    std::vector<Field> fields;
    std::shared_ptr<std::vector<ColumnStore>> columns = std::make_shared<std::vector<ColumnStore>>();
    size_t rows = 0;
    bool reordered = false;
    std::vector<quint32> order;  ///< only when reordered

    explicit TableData(std::vector<Field> names = {});
    size_t rowAt(int row) const { return reordered ? order[static_cast<size_t>(row)] : static_cast<size_t>(row); }
    size_t rowCount() const { return reordered ? order.size() : rows; }
};

}  // namespace koben
