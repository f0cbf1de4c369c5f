#include <QDateTime>

#include "tests/store/StoreTest.h"

namespace koben {
namespace {

struct Case {
    const char* sql;
    const char* rows;
};

/// A small herd: texts with umlauts and case, dates with gaps, money, Nulls.
class DialectTest : public StoreTest {
protected:
    void SetUp() override {
        StoreTest::SetUp();
        Transaction t(db);
        run(
            {"create table Sauen(Art TEXT (6), Nummer TEXT (15), Rasse TEXT (20), Geburtsdatum DATETIME, Status TEXT "
             "(5), "
             "Einkaufspreis CURRENCY, Gewicht SINGLE, Anz LONG, Abgangsdatum DATETIME, ID COUNTER)",
             "create index nummer on Sauen(Nummer)",
             "create index art on Sauen(Art)",
             "create table Trächtigkeit(Datum DATETIME, Trächtig TEXT (1), Kosten CURRENCY, Kennung LONG, ID COUNTER)",
             "create index datum on Trächtigkeit(Datum)",
             "create table Ferkelung(Datum DATETIME, Ferkel_Lebendig SHORT, Kosten CURRENCY, Kennung LONG, ID COUNTER)",
             "create index datum on Ferkelung(Datum)",
             "insert into Sauen values ('Sau', 'A1', 'DL', #3/2/2020#, 'B', 250.5, 12.5, 3, null, null)",
             "insert into Sauen values ('Sau', 'a10', 'Äsop', #12/31/2021#, 'B_T', 100, 0.1, 10, #1/5/2024#, null)",
             "insert into Sauen values ('Eber', 'B2', 'asop', null, '', null, null, null, null, null)",
             "insert into Sauen values ('SAU', 'Ä3', 'dl ', #2000-2-29#, 'B_NTG', -0.0001, 99, 3, null, null)",
             "insert into Sauen values ('Mast', 'ß', null, #7/15/2026#, 'G', 1000000, 5, 0, null, null)",
             "insert into Trächtigkeit values (#1/1/2024#, 'J', 10.5, 1, null)",
             "insert into Trächtigkeit values (#2/1/2024#, 'N', 0.25, 1, null)",
             "insert into Trächtigkeit values (#2/1/2023#, 'j', 3, 2, null)",
             "insert into Ferkelung values (#1/1/2023#, 10, 1, 1, null)",
             "insert into Ferkelung values (#6/1/2023#, 12, 2, 1, null)",
             "insert into Ferkelung values (#6/1/2024#, 9, 2, 1, null)",
             "insert into Ferkelung values (#1/1/2024#, 11, null, 2, null)",
             "insert into Ferkelung values (null, 7, 4, 4, null)"});
        t.commit();
    }

    void check(std::initializer_list<Case> cases) {
        for (const Case& c : cases) EXPECT_EQ(error(c.sql), QString::fromUtf8(c.rows)) << c.sql;
    }
};

TEST_F(DialectTest, Selecting) {
    check({
        {"select nummer, ID from SAUEN where id = 2;", "a10|2"},
        {"select [Nummer] from [Sauen] where [Sauen].[ID]=1", "A1"},
        {"select Sauen.* from Sauen where ID = 5", "Mast|ß|<Null>|15.07.2026|G|1000000|5|0|<Null>|5"},
        {"select S.Nummer as Nr from Sauen as S where S.ID > 4", "ß"},
        {"select TRÄCHTIG from trächtigkeit", "J; N; j"},
        {"select Nummer from Sauen order by Nummer", "A1; a10; Ä3; B2; ß"},
        {"select Nummer, Anz from Sauen order by Anz, Nummer desc", "B2|<Null>; ß|0; Ä3|3; A1|3; a10|10"},
        {"select Nummer as x from Sauen order by x", "A1; a10; Ä3; B2; ß"},
        {"select Anz, Nummer from Sauen order by 1 desc, 2", "10|a10; 3|A1; 3|Ä3; 0|ß; <Null>|B2"},
        {"select Nummer from Sauen order by len(Nummer), ID", "ß; A1; B2; Ä3; a10"},
        {"select distinct Rasse from Sauen", "<Null>; asop; Äsop; DL"},
        {"select top 0 ID from Sauen order by ID", ""},
        {"select top 1 Anz, ID from Sauen where Anz > 0 order by Anz", "3|1; 3|4"},
        {"select top 1 Nummer from Sauen order by Art", "B2"},
        {"select top 2 Art from Sauen order by Art desc", "Sau; Sau; SAU"},
        {"select top 1 Art, count(*) as n from Sauen group by Art order by count(*)", "Eber|1; Mast|1"},
        {"select distinct top 1 Anz from Sauen where Anz > 0 order by Anz", "3"},
    });
}

TEST_F(DialectTest, Conditions) {
    check({
        {"select ID from Sauen where Art = 'sau'", "1; 2; 4"},
        {"select ID from Sauen where Rasse = 'ÄSOP'", "2"},
        {"select ID from Sauen where Nummer = 'SS'", "5"},
        {"select ID from Sauen where Nummer < 'ä3'", "1; 2"},
        {"select ID from Sauen where Rasse is null or Abgangsdatum IS NOT NULL", "2; 5"},
        {"select ID from Sauen where Rasse = null", ""},
        {"select ID from Sauen where (Abgangsdatum IS NULL or Abgangsdatum > #1/1/2024#)", "1; 2; 3; 4; 5"},
        {"select ID from Sauen where Geburtsdatum between #1/1/2000# and #3/2/2020#", "1; 4"},
        {"select ID from Sauen where Geburtsdatum <= #3/2/20#", "1; 4"},
        {"select ID from Sauen where ID in (1, 3, 17)", "1; 3"},
        {"select ID from Sauen where ID not in (select Kennung from Ferkelung)", "3; 5"},
        {"select ID from Sauen where Art in (select 'EBER' from Sauen)", "3"},
        {"select ID from Sauen where exists (select * from Ferkelung where Kennung = Sauen.ID)", "1; 2; 4"},
        {"select ID from Sauen where not exists (select * from Ferkelung where Kennung = Sauen.ID and Kosten > 1)",
         "2; 3; 5"},
        {"select ID from Sauen where ID = (select max(Kennung) from Trächtigkeit)", "2"},
        {"select ID from Sauen where Status like 'B*'", "1; 2; 4"},
        {"select ID from Sauen where Status like 'B_NT*'", "4"},
        {"select ID from Sauen where Status not like 'B*'", "3; 5"},
        {"select ID from Sauen where Nummer like '[a-b]#'", "1; 3; 4"},
        {"select ID from Sauen where Nummer like '?#*' and Nummer not like '[!a]*'", "1; 2"},
        {"select ID from Sauen where ID like '1*'", "1"},
        {"select ID from Sauen where Einkaufspreis = 250.50004", "1"},
        {"select ID from Sauen where Gewicht = 0.1", "2"},
        {"select ID from Sauen where Anz = 3 xor Art = 'Sau'", "2"},
        {"select ID from Sauen where true", "1; 2; 3; 4; 5"},
        {"select ID from Sauen where Anz", "1; 2; 4"},
        {"select ID from Sauen where ID = 1 or ID = 2 and ID = 3", "1"},
        {"select ID from Sauen where Nummer = \"A1\"", "1"},
        {"select ID from Sauen where datediff('d', Geburtsdatum, now) = 0", "5"},
    });
}

TEST_F(DialectTest, Joins) {
    check({
        {"select Nummer, Ferkel_Lebendig from Sauen, Ferkelung where Sauen.ID = Ferkelung.Kennung",
         "A1|10; A1|12; A1|9; a10|11; Ä3|7"},
        {"select Nummer, Datum from Sauen, Ferkelung where Sauen.ID = Kennung and Kosten >= 2 order by Datum desc",
         "A1|01.06.2024; A1|01.06.2023; Ä3|<Null>"},
        {"select Sauen.ID, Ferkelung.ID from Sauen inner join Ferkelung on Sauen.ID = Ferkelung.Kennung where Sauen.ID "
         "> 1",
         "2|4; 4|5"},
        {"select S.ID, count(F.ID) as n from Sauen as S left join Ferkelung as F on S.ID = F.Kennung group by S.ID",
         "1|3; 2|1; 3|0; 4|1; 5|0"},
        {"select a.ID, b.ID from Sauen a, Sauen b where a.Anz = b.Anz and a.ID < b.ID", "1|4"},
        {"select x.n from (select Art, count(*) as n from Sauen group by Art) as x where x.Art = 'sau'", "3"},
        {"select S.ID from (Sauen S inner join Ferkelung F on S.ID = F.Kennung) inner join Trächtigkeit T on S.ID = "
         "T.Kennung where F.Kosten = 1",
         "1; 1"},
        {"select ID from Sauen union select Kennung from Ferkelung order by 1 desc", "5; 4; 3; 2; 1"},
        {"select Art from Sauen union select 'Huhn' from Sauen where ID < 3", "Eber; Huhn; Mast; Sau"},
    });
    EXPECT_EQ(names(db.table("select * from Trächtigkeit, Ferkelung where Trächtigkeit.ID = 0")),
              QString("Trächtigkeit.Datum|Trächtig|Trächtigkeit.Kosten|Trächtigkeit.Kennung|Trächtigkeit.ID|Ferkelung."
                      "Datum|Ferkel_Lebendig|"
                      "Ferkelung.Kosten|Ferkelung.Kennung|Ferkelung.ID"));
}

TEST_F(DialectTest, Grouping) {
    check({
        {"select count(*) as n, sum(Anz) as s, max(Nummer), min(Geburtsdatum), avg(Anz) from Sauen",
         "5|16|ß|29.02.2000|4"},
        {"select count(*), sum(Anz), max(Anz), avg(Anz), first(Anz), last(Anz) from Sauen where ID = 0",
         "0|<Null>|<Null>|<Null>|<Null>|<Null>"},
        {"select Art, count(*) as n from Sauen group by Art", "Eber|1; Mast|1; Sau|3"},
        {"select Rasse, count(*) from Sauen group by Rasse", "<Null>|1; asop|1; Äsop|1; DL|2"},
        {"select Art, max(ID) as m from Sauen group by Art having count(*) > 1", "Sau|4"},
        {"select Art, sum(Anz) as s from Sauen group by Art order by sum(Anz) desc, Art",
         "Sau|16; Mast|0; Eber|<Null>"},
        {"select Year(Datum) as Jahr, sum(Ferkel_Lebendig) as s from Ferkelung group by Year(Datum)",
         "<Null>|7; 2023|22; 2024|20"},
        {"select sum(Kosten), avg(Kosten), max(Kosten) from Trächtigkeit", "13,75|4,5833|10,5"},
        {"select sum(Einkaufspreis) from Sauen", "1000350,4999"},
        {"select first(Nummer), last(Nummer) from Sauen", "A1|ß"},
        {"select count(*) + 1 from Sauen where Abgangsdatum is null", "5"},
    });
    const Table t = db.table(
        "select max(Datum) as xdatum, sum(Kosten) as summe, count(*), sum(Ferkel_Lebendig), avg(Ferkel_Lebendig) from "
        "Ferkelung");
    EXPECT_EQ(names(t), QString("xdatum|summe|Expr1002|Expr1003|Expr1004"));
    const Type expected[] = {Type::Date, Type::Currency, Type::Long, Type::Long, Type::Double};
    for (int c = 0; c < 5; ++c) EXPECT_EQ(t.field(c).type, expected[c]) << c;
}

TEST_F(DialectTest, Pivots) {
    const struct {
        const char *sql, *names, *rows;
    } cases[] = {
        {"transform sum(Ferkel_Lebendig) select Nummer from Sauen, Ferkelung where Sauen.ID = Ferkelung.Kennung "
         "group by Nummer pivot Year(Datum);",
         "Nummer|<>|2023|2024", "A1|<Null>|22|9; a10|<Null>|<Null>|11; Ä3|7|<Null>|<Null>"},
        {"transform count(*) select Art, count(*) as Anzahl from Sauen group by Art pivot Rasse;",
         "Art|Anzahl|<>|asop|Äsop|DL",
         "Eber|1|<Null>|1|<Null>|<Null>; Mast|1|1|<Null>|<Null>|<Null>; Sau|3|<Null>|<Null>|1|2"},
        {"transform count(*) select Kennung from Ferkelung group by Kennung order by Kennung desc pivot Datum",
         "Kennung|<>|01_01_2023|01_06_2023|01_01_2024|01_06_2024",
         "4|1|<Null>|<Null>|<Null>|<Null>; 2|<Null>|<Null>|<Null>|1|<Null>; 1|<Null>|1|1|<Null>|1"},
        {"transform max(Kosten) select Kennung, sum(Kosten) as s from Ferkelung group by Kennung pivot "
         "Ferkel_Lebendig in (12, 9, 13)",
         "Kennung|s|12|9|13", "1|5|2|2|<Null>; 2|<Null>|<Null>|<Null>|<Null>; 4|4|<Null>|<Null>|<Null>"},
        {"transform count(*) select datediff('yyyy',Geburtsdatum, now) as Jahre from Sauen where Abgangsdatum IS "
         "NULL group by datediff('yyyy',Geburtsdatum, now) pivot Anz;",
         "Jahre|<>|0|3", "<Null>|1|<Null>|<Null>; 0|<Null>|1|<Null>; 6|<Null>|<Null>|1; 26|<Null>|<Null>|1"},
        {"transform count(*) select Art from Sauen where ID = 0 group by Art pivot Rasse", "Art", ""},
        {"transform sum(Kosten) select Kennung from Ferkelung group by Kennung pivot Kosten * 0.5",
         "Kennung|<>|0,5|1|2", "1|<Null>|1|4|<Null>; 2|<Null>|<Null>|<Null>|<Null>; 4|<Null>|<Null>|<Null>|4"}};
    for (const auto& c : cases) {
        const Table t = db.table(QString::fromUtf8(c.sql));
        EXPECT_EQ(names(t), QString(c.names)) << c.sql;
        EXPECT_EQ(rendered(t), QString(c.rows)) << c.sql;
    }
    EXPECT_EQ(db.table("transform max(Datum) select Kennung from Ferkelung group by Kennung pivot Ferkel_Lebendig")
                  .field(1)
                  .type,
              Type::Date);
}

TEST_F(DialectTest, ManyPivotColumns) {
    run({"create table Werte(Zeile LONG, Spalte TEXT (10))"});
    Statement add = db.prepare("insert into Werte values (?, ?)");
    {
        Transaction t(db);
        for (int i = 0; i < 3000; ++i) add.run({i % 2, QStringLiteral("Q%1").arg(i)});
        t.commit();
    }
    const Table t = db.table("transform count(*) select Zeile from Werte group by Zeile pivot Spalte");
    EXPECT_EQ(t.columnCount(), 3001);
    EXPECT_EQ(t.field(1).name + t.field(2).name + t.field(3).name, QString("Q0Q1Q10"));
    EXPECT_TRUE(t.isNull(1, 1));
    EXPECT_EQ(t.integer(1, 2), 1);
}

TEST_F(DialectTest, Expressions) {
    check({
        {"select 7/2, 7\\2, 7 mod 3, -7 mod 3, 2^10, -2^2, 7-2-1", "3,5|3|1|-1|1024|-4|4"},
        {"select 1+2*3, (1+2)*3, 10/4*2, 1/3", "7|9|5|0,333333333333333"},
        {"select 1/0, 5 \\ 0, 5 mod 0", "<Null>|<Null>|<Null>"},
        {"select 'a' & 'b', 'a' & null, null & null, 'a' + null, 'a' + 'b', 3 & 'x' & 2.5",
         "ab|a|<Null>|<Null>|ab|3x2,5"},
        {"select 'it''s', \"say \"\"hi\"\"\", 'a\"b'", "it's|say \"hi\"|a\"b"},
        {"select Einkaufspreis * 2, Einkaufspreis + 1, Einkaufspreis / 2, Einkaufspreis * 1.5, -Einkaufspreis from "
         "Sauen where ID = 1",
         "501|251,5|125,25|375,75|-250,5"},
        {"select Einkaufspreis + 0.1 + 0.2 from Sauen where ID = 2", "100,3"},
        {"select #1/31/2024# + 1, #3/1/2024# - #2/1/2024#, #2024-02-29# - 1", "01.02.2024|29|28.02.2024"},
        {"select iif(1 > 2, 'a', 'b'), iif(null, 1, 2), isnull(null), isnull(1), nz(null, 7), nz(3, 7)",
         "b|2|-1|0|7|3"},
        {"select 1 = 1, 1 = 2, null = 1, not true, 'a' < 'B'", "-1|0|<Null>|0|-1"},
        {"select 'abc' = 'ABC  ', 'ä' = 'a', 'ß' = 'ss', 'Æ' = 'ae'", "-1|0|-1|-1"},
        {"select null and false, null or true, null and true, not null", "0|-1|<Null>|<Null>"},
        {"select 2 + true, 5 and 3, 5 or 3", "1|1|7"},
        {"select 1e3, .5, 3000000000, 1.10", "1000|0,5|3000000000|1,1"},
    });
}

TEST_F(DialectTest, Functions) {
    check({
        {"select year(#3/2/2020#), month(#3/2/2020#), day(#3/2/2020#), weekday(#3/1/2020#), weekday(#3/1/2020#, 2)",
         "2020|3|2|1|7"},
        {"select year(null), datediff('d', null, now), datediff('d', now, null)", "<Null>|<Null>|<Null>"},
        {"select datediff('d', #12/31/2023#, #1/1/2024#), datediff('m', #1/31/2024#, #2/1/2024#), datediff('yyyy', "
         "#12/31/2023#, #1/1/2024#)",
         "1|1|1"},
        {"select datediff('ww', #7/11/2026#, #7/12/2026#), datediff('ww', #7/12/2026#, #7/18/2026#), datediff('ww', "
         "#7/12/2026#, #7/11/2026#)",
         "1|0|-1"},
        {"select datediff('w', #7/1/2026#, #7/14/2026#), datediff('q', #3/31/2024#, #4/1/2024#), datediff('d', now, "
         "#7/15/2026#)",
         "1|1|0"},
        {"select now, now(), date()", "15.07.2026 10:30:00|15.07.2026 10:30:00|15.07.2026"},
        {"select dateadd('m', 1, #1/31/2024#), dateadd('d', -1, #3/1/2023#), dateadd('yyyy', 1, #2/29/2024#), "
         "dateadd('ww', 2, #1/1/2024#)",
         "29.02.2024|28.02.2023|28.02.2025|15.01.2024"},
        {"select datepart('q', #5/1/2024#), datepart('y', #2/1/2024#), datepart('ww', #1/7/2024#), datepart('yyyy', "
         "#1/7/2024#)",
         "2|32|2|2024"},
        {"select dateserial(2024, 13, 0), dateserial(24, 2, 29), dateserial(99, 1, 1)",
         "31.12.2024|29.02.2024|01.01.1999"},
        {"select len('Säue'), left('Säue', 2), right('Säue', 2), mid('Säue', 2, 2), mid('Säue', 3), left('a', 9), "
         "right('a', 0)",
         "4|Sä|ue|äu|ue|a|"},
        {"select trim('  a b '), ltrim('  a'), rtrim('a  ') & '|', ucase('äß'), lcase('ÄB')", "a b|a|a||Äß|äb"},
        {"select val('12abc'), val('1.5'), val(''), val('1,5'), str(5), str(-5), str(2.5)", "12|1,5|0|1| 5|-5| 2.5"},
        {"select cstr(2.5), clng(2.5), clng(3.5), cint('7'), cdbl('1,5'), ccur(1.00005), cdate('1.2.2003')",
         "2,5|2|4|7|1,5|1|01.02.2003"},
        {"select int(-2.5), fix(-2.5), abs(-3), round(2.5), round(2.345, 2), sgn(-4), abs(-2.5)",
         "-3|-2|3|2|2,34|-1|2,5"},
        {"select round(Einkaufspreis, 0), int(Einkaufspreis) from Sauen where ID = 1", "250|250"},
        {"select instr('Sauen', 'U'), instr(3, 'abcabc', 'A'), instr('a', 'x'), replace('aXbx', 'x', '-')",
         "3|4|0|a-b-"},
        {"select format(#3/2/2020#, 'dd.mm.yyyy'), format(2.5, '0.00'), format(7, '0'), format(#3/2/2020#, 'yyyymmdd')",
         "02.03.2020|2,50|7|20200302"},
        {"select chr(65), asc('A'), space(2) & '|', string(3, 'x')", "A|65|  ||xxx"},
        {"select left(null, 2), len(null), ucase(null)", "<Null>|<Null>|<Null>"},
    });
}

TEST_F(DialectTest, Errors) {
    check({
        {"select Foo from Sauen", "UnknownName@7"},
        {"select Nummer from Sau", "UnknownName@19"},
        {"select ID from Sauen, Ferkelung where ID = 1", "UnknownName@7"},
        {"select Sauen.Foo from Sauen", "UnknownName@7"},
        {"select foo(1)", "UnknownName@7"},
        {"select Nummer Sauen", "Syntax@14"},
        {"select from Sauen", "Syntax@7"},
        {"select * from Sauen where", "Syntax@25"},
        {"select * from Sauen where Nummer = 'abc", "Syntax@35"},
        {"select * from Sauen where Datum = #13/13/2020#", "Syntax@34"},
        {"select * from Sauen where (ID = 1", "Syntax@33"},
        {"select * from Sauen order Nummer", "Syntax@26"},
        {"select [ID from Sauen", "Syntax@7"},
        {"selekt * from Sauen", "Syntax@0"},
        {"select * from Sauen where Nummer = 5", "Type@35"},
        {"select * from Sauen where ID = '5'", "Type@31"},
        {"select sum(Nummer) from Sauen", "Type@7"},
        {"select Art, count(*) from Sauen", "Syntax@7"},
        {"select * from Sauen where count(*) > 1", "Syntax@26"},
        {"select sum(count(*)) from Sauen", "Syntax@11"},
        {"select distinct Art from Sauen order by ID", "Syntax@40"},
        {"select ID from Sauen where ID in (select ID, Art from Sauen)", "Syntax@34"},
        {"select datediff('x', now, now)", "Type@-1"},
        {"select left('a')", "Syntax@7"},
        {"select clng('abc')", "Type@-1"},
        {"select Year('abc')", "Type@12"},
        {"insert into Sauen (Nummer, Foo) values ('a', 1)", "UnknownName@27"},
        {"insert into Sauen (Nummer) values ('a', 1)", "Syntax@27"},
        {"insert into Ferkelung values (1)", "Syntax@22"},
        {"insert into Sauen (Nummer, nummer) values ('a', 'b')", "Syntax@27"},
        {"insert into Sauen (Nummer) values ('1234567890123456')", "TooLong@35"},
        {"insert into Sauen (Anz) values (3000000000)", "Type@32"},
        {"insert into Ferkelung (Ferkel_Lebendig) values (32768)", "Type@48"},
        {"insert into Sauen (ID) values (0)", "Constraint@31"},
        {"insert into Sauen (ID) values (1)", "Constraint@-1"},
        {"update Sauen set ID = 7 where ID = 1", "Constraint@17"},
        {"update Sauen set Art = Nummer & 'XXXXXXXX'", "TooLong@-1"},
        {"create table sauen(a LONG)", "Constraint@13"},
        {"create table T(a LONG, A TEXT (5))", "Constraint@23"},
        {"create table T(a BLAH)", "Syntax@17"},
        {"create index art on Sauen(Art)", "Constraint@13"},
        {"alter table Sauen add column Art TEXT (5)", "Constraint@29"},
        {"drop index foo on Sauen", "UnknownName@11"},
        {"alter table Sauen drop column Nummer", "Constraint@30"},
        {"create table koben_x(a LONG)", "Syntax@13"},
        {"select * from koben_tables", "UnknownName@14"},
    });
    error("select Nummer, Fußo from Sauen");
    EXPECT_EQ(message,
              QString("Der Name \"Fußo\" ist unbekannt (Zeichen 16).\r\nAnweisung: select Nummer, Fußo from Sauen"));
}

TEST_F(DialectTest, Writing) {
    check({
        {"update Sauen set Art = Nummer & 'XXXX'", "TooLong@-1"},
        {"select Art from Sauen", "Sau; Sau; Eber; SAU; Mast"},
        {"insert into Ferkelung (Datum, Ferkel_Lebendig, Kosten) values ('24.12.2024', '12', '3,5')", "1"},
        {"select Datum, Ferkel_Lebendig, Kosten, Kennung, ID from Ferkelung where ID = 6",
         "24.12.2024|12|3,5|<Null>|6"},
        {"insert into Sauen (Nummer, Gewicht, Einkaufspreis, Geburtsdatum) values (12, 0.1, 1.00005, '2024-02-03')",
         "1"},
        {"select Nummer, Gewicht, Einkaufspreis, Geburtsdatum from Sauen where Nummer = '12'", "12|0,1|1|03.02.2024"},
        {"update Sauen set Nummer = Nummer & 'x', Anz = Anz + 1 where Anz = 3", "2"},
        {"select Nummer, Anz from Sauen where Nummer = 'a1X' or Nummer = 'ä3x'", "A1x|4; Ä3x|4"},
        {"update Sauen set Einkaufspreis = Einkaufspreis * 1.1 where ID = 2", "1"},
        {"select Einkaufspreis from Sauen where ID = 2", "110"},
        {"update Sauen set Status = ''", "6"},
        {"update Sauen set Geburtsdatum = null, Anz = null where ID = 1", "1"},
        {"select Geburtsdatum, Anz, Status from Sauen where ID = 1", "<Null>|<Null>|"},
        {"update Ferkelung set Kosten = 2 where Kennung in (select ID from Sauen where Art = 'Sau')", "5"},
        {"insert into Ferkelung (Kennung, Ferkel_Lebendig) select ID, len(Nummer) from Sauen where Art = 'sau' order "
         "by Nummer desc",
         "3"},
        {"select Kennung, Ferkel_Lebendig, ID from Ferkelung where ID > 6", "4|3|7; 1|3|8; 2|3|9"},
        {"delete * from Ferkelung where ID > 6", "3"},
        {"delete from Ferkelung", "6"},
        {"insert into Ferkelung (Kennung) values (1)", "1"},
        {"select ID from Ferkelung", "10"},
        {"insert into Ferkelung (Kennung, ID) values (1, 100)", "1"},
        {"insert into Ferkelung (Kennung) values (2)", "1"},
        {"select ID from Ferkelung", "10; 100; 101"},
        {"alter table Ferkelung add column Neu TEXT (3)", "0"},
        {"select Neu from Ferkelung where Neu is null", "<Null>; <Null>; <Null>"},
        {"update Ferkelung set Neu = ''", "3"},
        {"alter table Ferkelung drop column Neu", "0"},
        {"drop index datum on Ferkelung", "0"},
        {"create index datum on Ferkelung(Datum)", "0"},
        {"drop table Ferkelung", "0"},
        {"select * from Ferkelung", "UnknownName@14"},
        {"create table Ferkelung(Inhalt TEXT (5))", "0"},
        {"insert into Ferkelung values ('007')", "1"},
        {"select Inhalt from Ferkelung", "007"},
    });
}

TEST_F(DialectTest, StatementsWithOtherLiteralsShareAPlanButNotTheirMeaning) {
    check({
        {"select ID from Sauen where ID = 1", "1"},
        {"select ID from Sauen where ID = 1.5", ""},
        {"select ID from Sauen where Nummer = 'b2'", "3"},
        {"select ID from Sauen where ID in (1,2)", "1; 2"},
        {"select ID from Sauen where ID in (4,5)", "4; 5"},
        {"select top 1 ID from Sauen", "1"},
        {"select top 2 ID from Sauen", "1; 2"},
        {"insert into Trächtigkeit (Trächtig) values ('X')", "1"},
        {"insert into Trächtigkeit (Trächtig) values ('XY')", "TooLong@44"},
        {"select ID from Sauen where Einkaufspreis = 100", "2"},
        {"select ID from Sauen where Einkaufspreis = 250.5", "1"},
        {"select datediff('d', #1/1/2024#, #1/2/2025#) from Sauen where ID in (1) and datediff('yyyy', #1/1/2024#, "
         "#1/2/2025#) = 1",
         "367"},
    });
}

TEST_F(DialectTest, Parameters) {
    Statement find = db.prepare("select Nummer, Geburtsdatum, Einkaufspreis, Anz from Sauen where Art = ? and ID >= ?");
    find.bind({QStringLiteral("sau"), 2});
    ASSERT_TRUE(find.next());
    EXPECT_EQ(find.text(0), QString("a10"));
    EXPECT_EQ(find.day(1), QDate(2021, 12, 31).toJulianDay());
    EXPECT_EQ(find.integer(2), 1000000);
    ASSERT_TRUE(find.next());
    EXPECT_EQ(find.value(2), Value(Money{-1}));
    EXPECT_FALSE(find.next());
    EXPECT_THROW(find.text(0), DatabaseError);

    Statement change = db.prepare("update Sauen set Geburtsdatum = ?, Einkaufspreis = ?, Nummer = ? where ID = ?");
    EXPECT_EQ(change.run({QDate(2024, 2, 29), 12.34565, QStringLiteral("neu"), 1}), 1);
    EXPECT_EQ(ask("select Geburtsdatum, Einkaufspreis from Sauen where Nummer = 'NEU'"), QString("29.02.2024|12,3456"));
    EXPECT_THROW(change.run({QString(), 1, QString("x"), 1}), DatabaseError);
    EXPECT_THROW(change.run({Value(), 1, QString("12345678901234567"), 1}), DatabaseError);
    EXPECT_THROW(change.run({1}), DatabaseError);
    Statement top = db.prepare("select top 1 Anz from Sauen where Anz > ? order by Anz");
    int rows = 0;
    for (top.bind({0}); top.next();) ++rows;
    EXPECT_EQ(rows, 2);
}

}  // namespace
}  // namespace koben
