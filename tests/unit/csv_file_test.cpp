// unit/csv_file_test.cpp - views as comma-separated values: header, cells, labels.
#include "csv/csv_file.h"

#include "support.h"

#include <cmath>

namespace {

using strings = std::vector<std::string>;

class csv_file : public fresh_run {
  protected:
    const crv_column *column(const char *label, const std::vector<double> &values) {
        return add_column(slot++, values, label);
    }

    void add_file(const char *path, const crv_column *x, bool has_own_x,
                  const std::vector<const crv_column *> &columns) {
        view.files.push_back({path, x, has_own_x, columns});
    }

    std::string written() {
        return written_by([&](FILE *stream) { EXPECT_TRUE(crv_WriteCsv(view, stream)); });
    }

    crv_view view;
    int slot = 0;
};

TEST_F(csv_file, HeaderAndRows) {
    add_file("a.req", column("Time (sec)", {0, 0.1}), true,
             {column("Displ 38, Y", {1.25, -8.0625e-05}), column("Force", {1e22, -0.0})});
    EXPECT_EQ(written(), "Time (sec),\"Displ 38, Y\",Force\n"
                         "0,1.25,1e+22\n"
                         "0.1,-8.0625e-05,-0\n");
}

TEST_F(csv_file, SpecialValuesAreNamed) {
    add_file("a.pos", column("x", {NAN, -NAN, HUGE_VAL, -HUGE_VAL}), true, {});
    EXPECT_EQ(written(), "x\nnan\nnan\ninf\n-inf\n");
}

TEST_F(csv_file, ShorterColumnsEndInEmptyCells) {
    const crv_column *x = column("t", {0, 1, 2});
    add_file("a.req", x, true, {column("a", {5, 6, 7})});
    add_file("b.req", column("u", {0.5}), true, {column("b", {8})});
    add_file("c.req", x, false, {column("c", {9, 10})});
    EXPECT_EQ(written(), "t,a,u,b,c\n0,5,0.5,8,9\n1,6,,,10\n2,7,,,\n");
}

TEST_F(csv_file, QuotesLabelsWhereNeeded) {
    add_file("a.pos", column("say \"hi\"", {1}), true,
             {column("a,b", {2}), column("", {3}), column("a b;c", {4})});
    EXPECT_EQ(written(), "\"say \"\"hi\"\"\",\"a,b\",\"\",a b;c\n1,2,3,4\n");
}

TEST_F(csv_file, LabelsAreCleanText) {
    add_file("a.pos", column("a\nb", {1}), true, {column("Kr\xE4", {2})});
    EXPECT_EQ(crv_NameCsvColumns(view), (strings{"a\xEF\xBF\xBD"
                                                 "b",
                                                 "Kr\xEF\xBF\xBD"}));
}

TEST_F(csv_file, EqualLabelsOfFilesGetTheirPaths) {
    add_file("runs/a/out.req", column("Time", {1}), true, {column("Force", {2})});
    add_file("runs/b/out.req", column("Time", {1}), true, {column("Force", {2}), column("X", {3})});
    EXPECT_EQ(crv_NameCsvColumns(view),
              (strings{"Time (runs/a/out.req)", "Force (runs/a/out.req)", "Time (runs/b/out.req)",
                       "Force (runs/b/out.req)", "X"}));
}

TEST_F(csv_file, LabelsThatAreStillEqualGetNumbers) {
    add_file("a", column("T", {1}), true, {column("F", {2}), column("F", {2}), column("F_2", {2})});
    EXPECT_EQ(crv_NameCsvColumns(view), (strings{"T", "F", "F_2", "F_2_2"}));
    add_file("a", column("T", {1}), true, {column("F", {2})});
    EXPECT_EQ(crv_NameCsvColumns(view),
              (strings{"T (a)", "F (a)", "F (a)_2", "F_2", "T (a)_2", "F (a)_3"}));
}

TEST_F(csv_file, ManyRowsPassTheBlock) {
    std::vector<double> values;
    std::string wanted = "x,y\n";
    for (int k = 0; k < 40000; ++k) {
        values.push_back(k + 0.5);
        const std::string cell = std::to_string(k) + ".5";
        wanted.append(cell).append(",").append(cell).append("\n");
    }
    add_file("a.pos", column("x", values), true, {column("y", values)});
    EXPECT_EQ(written(), wanted);
}

TEST_F(csv_file, LongPathPassesTheBlock) {
    const std::string path(200'000, 'p');
    add_file("a", column("T", {1}), true, {});
    add_file(path.c_str(), column("T", {2}), true, {});
    EXPECT_EQ(written(), "T (a),T (" + path + ")\n1,2\n");
}

TEST_F(csv_file, StopsAtAFailedWrite) {
    add_file("a.pos", column("x", std::vector<double>(100'000, 0.125)), true, {});
    FILE *full = fopen("/dev/full", "w");
    setvbuf(full, nullptr, _IONBF, 0);
    EXPECT_TRUE(crv_WriteCsv(view, full));
    EXPECT_NE(ferror(full), 0);
    EXPECT_EQ(errno, ENOSPC);
    fclose(full);
}

} // namespace
