#include "store/sql/ParserBase.h"

namespace koben::sql {

std::unique_ptr<Select> ExpressionParser::select() {
    auto result = std::make_unique<Select>();
    result->position = here();
    expect(u"select");
    for (;;) {
        if (accept(u"distinct") || accept(u"distinctrow")) {
            result->distinct = true;
        } else if (at(u"top") && peek(1).token == Token::Number) {
            ++m_at;
            result->top = number();
        } else if (!(at(u"all") && !atSign(u',', 1)) || !accept(u"all")) {
            break;
        }
    }
    do result->items.push_back(item());
    while (acceptSign(u','));
    if (accept(u"from")) {
        do result->from.push_back(joined());
        while (acceptSign(u','));
    }
    selectTail(*result);
    return result;
}

void ExpressionParser::selectTail(Select& select) {
    if (accept(u"where")) select.where = expression();
    if (accept(u"group")) {
        expect(u"by");
        do select.groupBy.push_back(expression());
        while (acceptSign(u','));
    }
    if (accept(u"having")) select.having = expression();
    if (accept(u"union")) {
        select.unionAll = accept(u"all");
        select.unionWith = this->select();
        // An order by behind the last part is the order of the whole.
        select.orderBy = std::move(select.unionWith->orderBy);
        select.unionWith->orderBy.clear();
        return;
    }
    if (!accept(u"order")) return;
    expect(u"by");
    do {
        OrderKey& key = select.orderBy.emplace_back();
        key.expr = expression();
        key.descending = accept(u"desc");
        if (!key.descending) accept(u"asc");
    } while (acceptSign(u','));
}

SelectItem ExpressionParser::item() {
    SelectItem result;
    result.position = here();
    if (acceptSign(u'*')) return result;
    const bool named = peek().token == Token::Word || peek().token == Token::Quoted;
    if (named && atSign(u'.', 1) && atSign(u'*', 2)) {
        result.starOf = name();
        m_at += 2;
        return result;
    }
    result.expr = expression();
    if (accept(u"as")) result.alias = name();
    return result;
}

std::unique_ptr<Source> ExpressionParser::source() {
    auto result = std::make_unique<Source>();
    result->position = here();
    if (acceptSign(u'(')) {
        result->select = select();
        expectSign(u')');
    } else {
        result->name = name();
    }
    if (accept(u"as") || peek().token == Token::Quoted || (peek().token == Token::Word && !reserved(peek().text)))
        result->alias = name();
    return result;
}

std::unique_ptr<Join> ExpressionParser::joinLeaf() {
    if (atSign(u'(') && !at(u"select", 1)) {
        ++m_at;
        auto result = joined();
        expectSign(u')');
        return result;
    }
    auto result = std::make_unique<Join>();
    result->source = source();
    return result;
}

std::unique_ptr<Join> ExpressionParser::joined() {
    auto left = joinLeaf();
    for (;;) {
        auto kind = Join::Kind::Leaf;
        if (at(u"inner") || at(u"join")) kind = Join::Kind::Inner;
        if (at(u"left")) kind = Join::Kind::Left;
        if (at(u"right")) kind = Join::Kind::Right;
        if (kind == Join::Kind::Leaf) return left;
        if (!at(u"join")) ++m_at;
        accept(u"outer");
        expect(u"join");
        auto result = std::make_unique<Join>();
        result->kind = kind;
        result->left = std::move(left);
        result->right = joinLeaf();
        expect(u"on");
        result->on = expression();
        left = std::move(result);
    }
}

}  // namespace koben::sql
