#!/usr/bin/env python3
"""Many pairs in a selection, many options on a command line, many fields in a row."""
from harness import FORMATS, WROTE_NOTHING, main, reading, selecting

SLOTS = 31


def thirty_one_pairs_fill_the_table(place):
    for option, _, data, _, _, begin, end in FORMATS[:3]:
        place.write("a.txt", data)
        series = "7" if option == "-f" else "1"
        selection = ",".join([series] * SLOTS)
        place.expect_run(option, place.run("-r", selection, option, "a.txt", "-w", "x"),
                         selecting(selection, "a.txt") + begin.format("a.txt") + end.format("a.txt", 3) + WROTE_NOTHING)


def more_pairs_than_slots_are_refused_however_many(place):
    """65,535 pairs are the longest selection that a command line takes."""
    place.write("a.txt")
    for count in (SLOTS + 1, 1000, 65_535):
        selection = ",".join(["7"] * count)
        for option in ("-f", "-fm", "-fp", "-fa", "-fma"):
            place.expect_run(f"{option} {count}", place.run("-r", selection, option, "a.txt"), selecting(selection, "a.txt"),
                             f'%crv_05-f-col, "a.txt" would need {count} columns, 31 of 31 are free\n')
    place.expect("files", place.names(), ["a.txt"])


def a_thousand_file_options_are_taken_until_the_table_is_full(place):
    place.write("a.req")
    chosen = '%crv_05-i-ids, Request ids   = "0,7" \n'
    file = reading("a.req")[len(chosen):]
    place.expect_run("request files", place.run("-r", "0,7", *["-f", "a.req"] * 1000),
                     chosen + file + "%crv_05-i-tim, Redundant time specification ignored.\n" + file * (SLOTS - 2)
                     + '%crv_05-i-fil, File to process = "a.req" \n',
                     '%crv_05-f-col, "a.req" would need 1 columns, 0 of 31 are free\n')


def a_thousand_options_are_all_looked_at(place):
    chosen = '%crv_05-i-ids, Request ids   = "7" \n'
    place.expect_run("names too short", place.run("-r", "7", *["-f", "ab"] * 1000, "-w", "x"),
                     chosen + '%crv_05-i-fil, File to process = "ab" \n' * 1000 + WROTE_NOTHING)
    place.expect_run("unknown letters", place.run("-r", "7", *["-fz", "a.req"] * 1000, "-w", "x"), chosen + WROTE_NOTHING)
    place.expect_run("titles", place.run(*["-t", "title"] * 1000, "-w", "x"), WROTE_NOTHING)


def a_row_of_ten_million_fields_is_read_in_pieces_of_1023_characters(place):
    """The first piece has 512 fields, and that is the number of columns; each piece is a row."""
    with open(place.folder / "wide.pos", "wb") as out:
        for _ in range(100):
            out.write(b"1 " * 100_000)
        out.write(b"\n")
    pieces = 20_000_001 // 1023 + 1
    begun = '%crv_94-i-wor, Reading "wide.pos" ...\n%crv_94-i-val, file wide.pos has 512 columns.\n'
    place.expect_run("last column", place.run("-r", "0,512", "-fp0", "wide.pos", "-w", "x"),
                     selecting("0,512", "wide.pos") + begun + f"%crv_94-i-pts, file wide.pos has {pieces} steps\n"
                     + WROTE_NOTHING)
    place.expect_run("beyond", place.run("-r", "0,513", "-fp0", "wide.pos", "-w", "x"),
                     selecting("0,513", "wide.pos") + begun + '%crv_94-f-nocol, Column "513" does not exist!\n')
    place.expect_run("ten million", place.run("-r", "0,10000000", "-fp0", "wide.pos", "-w", "x"),
                     selecting("0,10000000", "wide.pos") + begun + '%crv_94-f-nocol, Column "10000000" does not exist!\n')
    place.expect_small("ten million columns")


main(thirty_one_pairs_fill_the_table, more_pairs_than_slots_are_refused_however_many,
     a_thousand_file_options_are_taken_until_the_table_is_full, a_thousand_options_are_all_looked_at,
     a_row_of_ten_million_fields_is_read_in_pieces_of_1023_characters)
