#pragma once
#include <QString>
#include <memory>
#include <vector>

/// A statement of the program's dialect, taken apart.
namespace store {

struct Select;

struct Name {
    /// Without brackets.
    QString text;
    bool bracketed = false;
};

struct Expression {
    enum Kind {
        Number,
        Text,
        Truth, ///< `word` is True or False
        Null,
        Column, ///< `name`, in `table` where that is given
        Star,   ///< "*", of `table` where that is given
        Sign,   ///< `word` in front of a part
        Not,
        Binary,  ///< `word` between the parts: AND, OR and "||" between any number of them
        Like,    ///< text, pattern and perhaps the escape
        Between, ///< value and the two bounds
        In,      ///< value and list, or `query`
        Is,      ///< two parts
        Call,    ///< function `word`, perhaps DISTINCT
        Case,    ///< perhaps an operand, pairs of WHEN and THEN, perhaps ELSE
        Cast,    ///< to the type `word`
        Collate, ///< by `word`
        Group,   ///< in brackets
        Query,   ///< SELECT in brackets
        Exists
    };

    Kind kind = Null;
    QString word = {};
    Name table = {}, name = {};
    /// Position of a number or text among the literals of the statement; -1 where it was put together.
    int literal = -1;
    /// NOT IN, IS NOT and so on.
    bool negated = false;
    bool distinct = false;
    /// Of a CASE.
    bool hasOperand = false, hasElse = false;
    std::vector<Expression> parts = {};
    std::shared_ptr<Select> query = {};

    bool isComparison() const {
        return kind == Like || kind == Between || kind == In || kind == Is ||
               (kind == Binary && QStringView(u"=<>!").contains(word.front()));
    }
};

struct Item {
    Expression value;
    Name alias = {};
};

/// A table or query of the FROM clause.
struct Source {
    /// What stands in front of it: "", "," or the words of the join.
    QString join = {};
    Name table = {}, alias = {};
    std::shared_ptr<Select> query = {};
    /// Of a function that gives a table.
    bool isFunction = false;
    std::vector<Expression> arguments = {};
    std::shared_ptr<Expression> on = {};
};

struct Order {
    Expression value;
    bool down = false;
};

/// A SELECT without its order, or VALUES.
struct Core {
    bool distinct = false;
    std::vector<Item> items = {};
    std::vector<Source> sources = {};
    std::shared_ptr<Expression> where = {}, having = {};
    std::vector<Expression> groups = {};
    std::vector<std::vector<Expression>> rows = {};
};

/// A named query of a WITH clause.
struct Named {
    Name name = {};
    std::vector<Name> columns = {};
    std::shared_ptr<Select> query = {};
};

struct Select {
    bool recursive = false;
    std::vector<Named> with = {};
    /// TOP n, -1 without.
    int top = -1;
    std::vector<Core> cores = {};
    /// Between the cores: UNION, UNION ALL and so on.
    std::vector<QString> unions = {};
    std::vector<Order> order = {};
    std::shared_ptr<Expression> limit = {}, offset = {};
};

struct Assignment {
    Name column;
    Expression value;
};

struct Statement {
    enum Verb { Selects, Inserts, Updates, Deletes };

    Verb verb = Selects;
    /// The SELECT, or what is inserted; nothing for DEFAULT VALUES.
    std::shared_ptr<Select> select = {};
    Source table = {};
    std::vector<Name> columns = {};
    std::vector<Assignment> assignments = {};
    std::shared_ptr<Expression> where = {};
};

/// Reads SELECT, INSERT, UPDATE and DELETE. Anything else throws common::RunTimeError kSqlFailure.
Statement parseStatement(const QString& sql);

} // namespace store
