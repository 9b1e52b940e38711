#include "platform/sql/parser.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/sql/ast.h"

namespace {

using sql::SyntaxError;

std::string tree(std::string_view criterion) {
    return sql::dump(*sql::parseCriterion(criterion));
}

// The tree of a value, from a criterion that compares it with nothing.
std::string valueTree(const std::string& value) {
    const std::string whole = tree("(" + value + ") IS NULL");
    constexpr std::string_view kHead = "(is-null ";
    return whole.substr(kHead.size(), whole.size() - kHead.size() - 1);
}

std::size_t failsAt(const std::string& statement) {
    try {
        sql::parse(statement);
    } catch (const SyntaxError& error) {
        EXPECT_FALSE(std::string(error.what()).empty());
        return error.position();
    }
    ADD_FAILURE() << "no error in " << statement;
    return 0;
}

std::string chainOf(int terms, std::string_view field, std::string_view joint = " OR ") {
    std::string text;
    for (int i = 0; i < terms; ++i) {
        if (i > 0) {
            text += joint;
        }
        text += field;
        text += "=" + std::to_string(terms - i);
    }
    return text;
}

std::string repeated(std::string_view piece, int times) {
    std::string result;
    for (int i = 0; i < times; ++i) {
        result += piece;
    }
    return result;
}

TEST(ExpressionParser, BindsAsTheEngineDoes) {
    EXPECT_EQ(valueTree("1+2*3"), "(+ 1 (* 2 3))");
    EXPECT_EQ(valueTree("1-2-3"), "(- (- 1 2) 3)");
    EXPECT_EQ(valueTree("8/4/2"), "(/ (/ 8 4) 2)");
    EXPECT_EQ(valueTree("(1-2)*3"), "(* (- 1 2) 3)");
    EXPECT_EQ(valueTree("1+7 Mod 4\\2*3"), "(+ 1 (mod 7 (\\ 4 (* 2 3))))");
    EXPECT_EQ(valueTree("a & 1+2 & b"), "(& (& [a] (+ 1 2)) [b])");
    EXPECT_EQ(valueTree("-a*2"), "(* (neg [a]) 2)");
    EXPECT_EQ(valueTree("2*-3"), "(* 2 -3)");
    EXPECT_EQ(valueTree("--3"), "3");
    EXPECT_EQ(valueTree("+a"), "[a]");
    EXPECT_EQ(tree("a & b = c"), "(= (& [a] [b]) [c])");
    EXPECT_EQ(tree("NOT a=1 AND b=2 OR c=3"), "(or (and (not (= [a] 1)) (= [b] 2)) (= [c] 3))");
    EXPECT_EQ(tree("a=1 OR b=2 AND c=3"), "(or (= [a] 1) (and (= [b] 2) (= [c] 3)))");
    EXPECT_EQ(tree("(a=1 OR b=2) AND c=3"), "(and (or (= [a] 1) (= [b] 2)) (= [c] 3))");
    EXPECT_EQ(tree("a=b=c"), "(= (= [a] [b]) [c])");
}

TEST(ExpressionParser, KnowsEveryComparison) {
    EXPECT_EQ(tree("a<>1"), "(<> [a] 1)");
    EXPECT_EQ(tree("a<1"), "(< [a] 1)");
    EXPECT_EQ(tree("a>1"), "(> [a] 1)");
    EXPECT_EQ(tree("a<=1"), "(<= [a] 1)");
    EXPECT_EQ(tree("a>=1"), "(>= [a] 1)");
    EXPECT_EQ(tree("a is null"), "(is-null [a])");
    EXPECT_EQ(tree("a IS NOT NULL"), "(is-not-null [a])");
    EXPECT_EQ(tree("a BETWEEN 1 AND 2 AND b=3"), "(and (between [a] 1 2) (= [b] 3))");
    EXPECT_EQ(tree("a NOT BETWEEN 1 AND 2"), "(not-between [a] 1 2)");
    EXPECT_EQ(tree("a IN ('x', \"y\")"), "(in [a] 'x' 'y')");
    EXPECT_EQ(tree("a NOT IN (1,2)"), "(not-in [a] 1 2)");
    EXPECT_EQ(tree("a IN (3,1,2,1)"), "(in-set [a] 1 2 3)");
    EXPECT_EQ(tree("a = True OR a = false"), "(or (= [a] true) (= [a] false))");
}

TEST(ExpressionParser, EveryFormOfANameMeansTheSame) {
    for (const char* name : {"Services.Price", "Services!Price", "[Services]![Price]", "[Services].[Price]",
                             "Services.[Price]", "[Services]!Price", "[ Services ] . [ Price ]"}) {
        EXPECT_EQ(valueTree(name), "[Services].[Price]") << name;
    }
    EXPECT_EQ(valueTree("[Services.Price]"), "[Services.Price]");
    EXPECT_TRUE(sql::parseCriterion("[Services.Price]=1")->children[0]->dotted);
    EXPECT_FALSE(sql::parseCriterion("[Price]=1")->children[0]->dotted);
    EXPECT_EQ(valueTree("[Order]"), "[Order]");
    EXPECT_EQ(valueTree("T.Order"), "[T].[Order]");
}

TEST(ExpressionParser, FunctionsTakeTheirNumberOfArguments) {
    EXPECT_EQ(valueTree("DATEDIFF(\"d\",now(),[a]![b],2)"), "(DateDiff 'd' (Now) [a].[b] 2)");
    EXPECT_EQ(valueTree("DateDiff('d',a,b)"), "(DateDiff 'd' [a] [b])");
    for (const char* text : {"DateDiff('d',a)=1", "DateDiff('d',a,b,1,1)=1", "Now(1)=1", "DateDiff()=1",
                             "Sum()=1", "Sum(*)=1", "Count()=1", "Nz(a)=1", "Count(a,b)=1"}) {
        EXPECT_THROW(sql::parseCriterion(text), SyntaxError) << text;
    }
}

TEST(Criterion, NeedsAComparison) {
    for (const char* text : {"", "   ", ";", "ID", "[ID]", "5", "-5", "(5)", "'x'", "ID+1", "Null", "Now()",
                             "#1/1/1900#", "-ID", "a & b"}) {
        EXPECT_THROW(sql::parseCriterion(text), SyntaxError) << text;
    }
    EXPECT_EQ(tree("CustID=5"), "(= [CustID] 5)");
    EXPECT_EQ(tree("CustID=5;"), "(= [CustID] 5)");
    EXPECT_EQ(tree("Not FirmAddress"), "(not [FirmAddress])");
    EXPECT_EQ(tree("True"), "true");
}

TEST(Criterion, IsNoStatement) {
    for (const char* text :
         {"CustID=5 ORDER BY CustID", "WHERE CustID=5", "CustID=5; CustID=6", "CustID=5 x", "CustID==5",
          "CustID=", "=5", "Naziv=\"a", "Naziv='O'Neil'", "CustID=5)", "(CustID=5"}) {
        EXPECT_THROW(sql::parseCriterion(text), SyntaxError) << text;
    }
}

TEST(OrChain, OfNumbersOfOneFieldIsASet) {
    EXPECT_EQ(tree("ID=3 OR ID=1 OR ID=3 OR id=2"), "(in-set [ID] 1 2 3)");
    EXPECT_EQ(tree("ID=1"), "(= [ID] 1)");
    EXPECT_EQ(tree("ID=1 OR ID=1"), "(in-set [ID] 1)");
    EXPECT_EQ(tree("(ID=1) OR (ID=2)"), "(in-set [ID] 1 2)");
    EXPECT_EQ(tree("ID = 1 or ID =2 Or ID= -3"), "(in-set [ID] -3 1 2)");
    EXPECT_EQ(tree("[T]![ID]=1 OR [T]![ID]=2 OR T.ID=3"), "(in-set [T].[ID] 1 2 3)");
}

TEST(OrChain, KeepsWhatIsNoNumberOfThatField) {
    EXPECT_EQ(tree("ID=1 OR ID=2 OR Naziv='x' OR ID=3"), "(or (in-set [ID] 1 2 3) (= [Naziv] 'x'))");
    EXPECT_EQ(tree("ID=1 OR ID=2 AND Naziv='x' OR ID=3"),
              "(or (in-set [ID] 1 3) (and (= [ID] 2) (= [Naziv] 'x')))");
    EXPECT_EQ(tree("ID=1 OR ID=2.5 OR ID=3"), "(or (in-set [ID] 1 3) (= [ID] 2.5))");
    EXPECT_EQ(tree("ID=1 OR ID=2+1 OR ID=3"), "(or (in-set [ID] 1 3) (= [ID] (+ 2 1)))");
    EXPECT_EQ(tree("ID=1 OR ID=2=3"), "(or (= [ID] 1) (= (= [ID] 2) 3))");
    EXPECT_EQ(tree("ID=1 OR ID=2 OR IDGrupe=3 OR IDGrupe=4"),
              "(or (in-set [ID] 1 2) (in-set [IDGrupe] 3 4))");
    EXPECT_EQ(tree("ID=1 OR IDGrupe=3"), "(or (= [ID] 1) (= [IDGrupe] 3))");
    EXPECT_EQ(tree("A.ID=1 OR B.ID=2"), "(or (= [A].[ID] 1) (= [B].[ID] 2))");
    EXPECT_EQ(tree("(ID=1 OR ID=2) AND x=1"), "(and (in-set [ID] 1 2) (= [x] 1))");
}

TEST(OrChain, StillRefusesWhatIsWrongInside) {
    const std::string head = "SELECT * FROM T WHERE ID=1 OR ID=2 OR ";
    EXPECT_EQ(failsAt(head), head.size());
    EXPECT_EQ(failsAt(head + "ID="), head.size() + 3);
    EXPECT_EQ(failsAt(head + "ID=x y"), head.size() + 5);
    EXPECT_EQ(failsAt(head + "ID=3x"), head.size() + 3);
    EXPECT_EQ(failsAt(head + "ID=3 ID=4"), head.size() + 5);
    EXPECT_EQ(failsAt(head + "ID=3OR ID=4"), head.size() + 3);
    EXPECT_EQ(failsAt(head + "OR ID=4"), head.size());
}

TEST(OrChain, OfAHundredThousandTermsIsOneSet) {
    const sql::StatementPtr statement =
        sql::parse("SELECT * FROM Services WHERE " + chainOf(100000, "MachineID") + ";");
    ASSERT_EQ(statement->where->kind, sql::Expression::Kind::InSet);
    ASSERT_EQ(statement->where->ids->size(), 100000U);
    EXPECT_EQ(statement->where->ids->front(), 1);
    EXPECT_EQ(statement->where->ids->back(), 100000);
}

TEST(OrChain, NamesEachNumberOnceAndAscending) {
    const auto setOf = [](const std::string& text) { return *sql::parseCriterion(text)->ids; };
    using Numbers = std::vector<std::int64_t>;
    EXPECT_EQ(setOf("ID=5 OR ID=3 OR ID=5 OR ID=-4 OR ID=4"), (Numbers{-4, 3, 4, 5}));
    EXPECT_EQ(setOf("ID=3 OR ID=3 OR ID=4"), (Numbers{3, 4}));
    EXPECT_EQ(setOf("ID=64 OR ID=0 OR ID=64"), (Numbers{0, 64}));
    EXPECT_EQ(setOf("ID=9000000 OR ID=-4 OR ID=9000000"), (Numbers{-4, 9000000}));
    EXPECT_EQ(setOf("ID=9223372036854775807 OR ID=-9223372036854775807 OR ID=0"),
              (Numbers{-9223372036854775807, 0, 9223372036854775807}));
}

TEST(OrChain, MayHaveAMillionTerms) {
    EXPECT_EQ(sql::parseCriterion(chainOf(1000000, "ID"))->ids->size(), 1000000U);
    EXPECT_EQ(sql::parseCriterion(chainOf(100000, "(ID", ") OR ") + ")")->ids->size(), 100000U);
}

TEST(OrChain, OfTextsStaysOneNode) {
    std::string text = "Naziv='0'";
    for (int i = 1; i < 100000; ++i) {
        text += " OR Naziv='" + std::to_string(i) + "'";
    }
    const sql::ExpressionPtr chain = sql::parseCriterion(text);
    EXPECT_EQ(chain->kind, sql::Expression::Kind::Or);
    EXPECT_EQ(chain->children.size(), 100000U);
    EXPECT_EQ(chain->depth, 3);
}

TEST(AndChain, MayHaveAHundredThousandTerms) {
    EXPECT_EQ(sql::parseCriterion(chainOf(100000, "ID", " AND "))->children.size(), 100000U);
}

TEST(Depth, IsBounded) {
    EXPECT_NO_THROW(sql::parse("SELECT " + repeated("(", 150) + "1" + repeated(")", 150) + " FROM T"));
    EXPECT_EQ(failsAt("SELECT " + repeated("(", 100000) + "1" + repeated(")", 100000) + " FROM T"), 206U);
    failsAt("SELECT * FROM T WHERE " + repeated("NOT ", 100000) + "a=1");
    failsAt("SELECT " + repeated("- ", 100000) + "a FROM T");
    failsAt("SELECT " + repeated("Sum(", 100000) + "a" + repeated(")", 100000) + " FROM T");
    failsAt("SELECT * FROM " + repeated("(", 100000) + "T" + repeated(")", 100000));
    failsAt("SELECT * FROM " + repeated("(SELECT * FROM ", 100000) + "T" + repeated(")", 100000));
    failsAt("SELECT * FROM T WHERE " + repeated("a IN (", 100000) + "1" + repeated(")", 100000));
    failsAt("SELECT a" + repeated("+a", 100000) + " FROM T");
    failsAt("SELECT a" + repeated(" & a", 100000) + " FROM T");
    failsAt("SELECT a" + repeated("=a", 100000) + " FROM T");
    failsAt("SELECT a" + repeated(" IS NULL", 100000) + " FROM T");
    EXPECT_NO_THROW(sql::parse("SELECT a" + repeated("+a", 300) + " FROM T"));
}

TEST(Depth, TablesInAJoinAreBounded) {
    EXPECT_NO_THROW(sql::parse("SELECT * FROM T0" + repeated(", T", 31)));
    EXPECT_THROW(sql::parse("SELECT * FROM T0" + repeated(", T", 100000)), SyntaxError);
    EXPECT_THROW(sql::parse("SELECT * FROM T0" + repeated(" LEFT JOIN T ON a=b", 100000)), SyntaxError);
}

TEST(Parser, ASemicolonMayCloseAStatement) {
    EXPECT_EQ(sql::dump(*sql::parse("SELECT * FROM T;")),
              sql::dump(*sql::parse("  select\t*\r\nfrom T  ;  ")));
    EXPECT_EQ(failsAt("SELECT * FROM T;;"), 16U);
    EXPECT_EQ(failsAt(";"), 0U);
    EXPECT_EQ(failsAt(""), 0U);
    EXPECT_EQ(failsAt("   "), 0U);
}

TEST(Parser, ErrorsTellWhere) {
    EXPECT_EQ(failsAt("SELECT FROM T"), 7U);
    EXPECT_EQ(failsAt("SELECT * T"), 9U);
    EXPECT_EQ(failsAt("SELECT a b FROM T"), 9U);
    EXPECT_EQ(failsAt("SELECT a, FROM T"), 10U);
    EXPECT_EQ(failsAt("SELECT a AS FROM T"), 12U);
    EXPECT_EQ(failsAt("SELECT * FROM"), 13U);
    EXPECT_EQ(failsAt("SELECT * FROM T LEFT T2"), 21U);
    EXPECT_EQ(failsAt("SELECT * FROM T LEFT JOIN T2"), 28U);
    EXPECT_EQ(failsAt("SELECT * FROM T ORDER Naziv"), 22U);
    EXPECT_EQ(failsAt("SELECT * FROM T ORDER BY Naziv UP"), 31U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a IS 5"), 27U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a NOT 5"), 28U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a.b.c=5"), 25U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a IN ()"), 28U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a BETWEEN 1 OR 2"), 34U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a=2^3"), 25U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a=1 XOR b=2"), 26U);
    EXPECT_EQ(failsAt("SELECT * FROM T WHERE a IN (SELECT b FROM T)"), 28U);
    EXPECT_EQ(failsAt("UPDATE T a=5"), 9U);
    EXPECT_EQ(failsAt("UPDATE T SET a"), 14U);
    EXPECT_EQ(failsAt("DELETE T"), 7U);
    EXPECT_EQ(failsAt("DELETE A.* FROM T"), 7U);
    EXPECT_EQ(failsAt("INSERT INTO T VALUES (1)"), 14U);
    EXPECT_EQ(failsAt("INSERT INTO T (a) VALUES (1,2)"), 28U);
    EXPECT_EQ(failsAt("INSERT INTO T (a,b) VALUES (1)"), 29U);
}

TEST(Parser, AMessageShowsThePlace) {
    try {
        sql::parse("SELECT * FROM Customers WHERE CustID 5");
        FAIL();
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.position(), 37U);
        EXPECT_NE(std::string(error.what()).find("'5'"), std::string::npos);
    }
}

TEST(Parser, EveryTruncationOfAStatementIsHandled) {
    const std::string text =
        "SELECT Customers.CustID, [Services]![Paid] AS Expr1 FROM Customers LEFT JOIN (Computers LEFT JOIN "
        "Services "
        "ON Computers.MachineID = Services.MachineID) ON Customers.CustID = Computers.CustID WHERE "
        "((DateDiff(\"d\",Now(),[Services]![ServiceToBeFinished],2))<=5) AND (Services.Price>0) ORDER BY "
        "Price DESC;";
    int refused = 0;
    for (std::size_t length = 0; length < text.size(); ++length) {
        try {
            sql::parse(text.substr(0, length));
        } catch (const SyntaxError& error) {
            EXPECT_LE(error.position(), length);
            ++refused;
        }
    }
    EXPECT_GT(refused, 200);
}

}  // namespace
