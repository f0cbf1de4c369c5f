#include "store/sql/Parser.h"

#include "store/sql/ParserBase.h"

namespace koben::sql {
namespace {

class Parser : public ExpressionParser {
public:
    using ExpressionParser::ExpressionParser;

    Statement statement() {
        Statement result;
        if (accept(u"transform"))
            result.query = transform();
        else if (at(u"select"))
            result.query = query();
        else if (accept(u"insert"))
            result.insert = insert();
        else if (accept(u"update"))
            result.update = update();
        else if (accept(u"delete"))
            result.remove = remove();
        else if (accept(u"create"))
            result.ddl = create();
        else if (accept(u"drop"))
            result.ddl = drop();
        else if (accept(u"alter"))
            result.ddl = alter();
        else
            unexpected(QStringLiteral("eine Anweisung (select, insert, update, delete, create ...)"));
        finish();
        return result;
    }

private:
    std::unique_ptr<Query> query() {
        auto result = std::make_unique<Query>();
        result->select = select();
        return result;
    }

    std::unique_ptr<Query> transform() {
        auto result = std::make_unique<Query>();
        result->transform = expression();
        result->select = select();
        expect(u"pivot");
        result->pivot = expression(true);
        if (accept(u"in")) {
            expectSign(u'(');
            do result->pivotIn.push_back(expression());
            while (acceptSign(u','));
            expectSign(u')');
        }
        return result;
    }

    std::unique_ptr<Insert> insert() {
        auto result = std::make_unique<Insert>();
        expect(u"into");
        result->position = here();
        result->table = name();
        if (acceptSign(u'(')) {
            do {
                const int position = here();
                result->columns.emplace_back(qualifiedName().second, position);
            } while (acceptSign(u','));
            expectSign(u')');
        }
        result->valuesPosition = here();
        if (at(u"select")) {
            result->select = select();
            return result;
        }
        expect(u"values");
        expectSign(u'(');
        do result->values.push_back(expression());
        while (acceptSign(u','));
        expectSign(u')');
        return result;
    }

    std::unique_ptr<Update> update() {
        auto result = std::make_unique<Update>();
        result->source = source();
        expect(u"set");
        do {
            const int position = here();
            auto [qualifier, column] = qualifiedName();
            expectSign(u'=');
            result->sets.push_back({qualifier, column, position, expression()});
        } while (acceptSign(u','));
        if (accept(u"where")) result->where = expression();
        return result;
    }

    std::unique_ptr<Delete> remove() {
        auto result = std::make_unique<Delete>();
        if (!acceptSign(u'*') && !at(u"from")) {
            name();
            expectSign(u'.');
            expectSign(u'*');
        }
        expect(u"from");
        result->source = source();
        if (accept(u"where")) result->where = expression();
        return result;
    }

    std::unique_ptr<Ddl> create() {
        auto result = std::make_unique<Ddl>();
        if (accept(u"table")) {
            result->kind = Ddl::Kind::CreateTable;
            tableName(*result);
            expectSign(u'(');
            do result->columns.push_back(columnDef());
            while (acceptSign(u','));
            expectSign(u')');
            return result;
        }
        result->unique = accept(u"unique");
        expect(u"index");
        result->kind = Ddl::Kind::CreateIndex;
        indexOnTable(*result);
        expectSign(u'(');
        do {
            ColumnDef& column = result->columns.emplace_back();
            column.position = here();
            column.name = name();
            if (!accept(u"desc")) accept(u"asc");
        } while (acceptSign(u','));
        expectSign(u')');
        return result;
    }

    std::unique_ptr<Ddl> drop() {
        auto result = std::make_unique<Ddl>();
        if (accept(u"index")) {
            result->kind = Ddl::Kind::DropIndex;
            indexOnTable(*result);
        } else {
            expect(u"table");
            result->kind = Ddl::Kind::DropTable;
            tableName(*result);
        }
        return result;
    }

    std::unique_ptr<Ddl> alter() {
        auto result = std::make_unique<Ddl>();
        expect(u"table");
        tableName(*result);
        const bool add = accept(u"add");
        if (!add) expect(u"drop");
        accept(u"column");
        result->kind = add ? Ddl::Kind::AddColumn : Ddl::Kind::DropColumn;
        if (add) {
            result->columns.push_back(columnDef());
        } else {
            ColumnDef& column = result->columns.emplace_back();
            column.position = here();
            column.name = name();
        }
        return result;
    }

    void tableName(Ddl& ddl) {
        ddl.tablePosition = here();
        ddl.table = name();
    }

    void indexOnTable(Ddl& ddl) {
        ddl.indexPosition = here();
        ddl.index = name();
        expect(u"on");
        tableName(ddl);
    }

    ColumnDef columnDef() {
        ColumnDef column;
        column.position = here();
        column.name = name();
        columnType(column);
        for (;;) {
            if (accept(u"not")) {
                expect(u"null");
                column.notNull = true;
            } else if (accept(u"primary")) {
                expect(u"key");
                column.unique = column.notNull = true;
            } else if (accept(u"unique")) {
                column.unique = true;
            } else if (!accept(u"null")) {
                return column;
            }
        }
    }

    void columnType(ColumnDef& column) {
        struct TypeName {
            const char16_t* name;
            Type type;
            int size;
        };
        static constexpr int kDefaultText = 255;
        static constexpr TypeName kTypes[] = {{u"text", Type::Text, kDefaultText},
                                              {u"char", Type::Text, kDefaultText},
                                              {u"varchar", Type::Text, kDefaultText},
                                              {u"string", Type::Text, kDefaultText},
                                              {u"memo", Type::Text, 0},
                                              {u"longtext", Type::Text, 0},
                                              {u"datetime", Type::Date, 0},
                                              {u"date", Type::Date, 0},
                                              {u"timestamp", Type::Date, 0},
                                              {u"long", Type::Long, 0},
                                              {u"integer", Type::Long, 0},
                                              {u"int", Type::Long, 0},
                                              {u"short", Type::Short, 0},
                                              {u"smallint", Type::Short, 0},
                                              {u"single", Type::Single, 0},
                                              {u"real", Type::Single, 0},
                                              {u"double", Type::Double, 0},
                                              {u"float", Type::Double, 0},
                                              {u"number", Type::Double, 0},
                                              {u"currency", Type::Currency, 0},
                                              {u"money", Type::Currency, 0},
                                              {u"bit", Type::Bool, 0},
                                              {u"yesno", Type::Bool, 0},
                                              {u"boolean", Type::Bool, 0},
                                              {u"logical", Type::Bool, 0},
                                              {u"counter", Type::Long, 0},
                                              {u"autoincrement", Type::Long, 0}};
        const int position = here();
        const QString word = name();
        for (const TypeName& t : kTypes) {
            if (word.compare(QStringView(t.name), Qt::CaseInsensitive) != 0) continue;
            column.type = t.type;
            column.size = t.size;
            column.counter = is(word, u"counter") || is(word, u"autoincrement");
            if (t.type == Type::Text && acceptSign(u'(')) textSize(column);
            return;
        }
        text().fail(DatabaseError::Kind::Syntax, position,
                    QStringLiteral("Der Feldtyp \"%1\" ist unbekannt").arg(word));
    }

    void textSize(ColumnDef& column) {
        const int position = here();
        column.size = static_cast<int>(number());
        if (column.size < 1 || column.size > 255)
            text().fail(DatabaseError::Kind::Syntax, position,
                        QStringLiteral("Die Textlänge %1 liegt nicht zwischen 1 und 255").arg(column.size));
        expectSign(u')');
    }
};

}  // namespace

Statement parse(const Text& text, const Lexed& lexed) { return Parser(text, lexed).statement(); }

ExprPtr parseCriteria(const Text& text, const Lexed& lexed) {
    Parser parser(text, lexed);
    ExprPtr result = parser.expression();
    parser.finish();
    return result;
}

}  // namespace koben::sql
