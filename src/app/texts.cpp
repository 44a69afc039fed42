// app/texts.cpp - tables of the fixed texts, line by line, and the status with its variable parts.
#include "app/texts.h"

#include "records/column.h"
#include "records/settings.h"
#include "system/console.h"
#include "util/identity.h"

#include <cstdio>
#include <iterator>

// Deliberate: these texts do not change, because users depend on them. They describe keys and
// windows of an earlier interactive display, and the debug help lists routines that do not exist
// here.

static constexpr const char *help_text[] = {
    "\n",
    " !****************************************************************************\n",
    " !\n",
    " !     Help option for the Kelp plot routines\n",
    " !\n",
    " !  -e  Example  Offer examples of command invocation\n",
    " !\n",
    " !  -f  File     Determine which .req file to use. (-fg :vdr)  !positional\n",
    " !  -fm FileMad  Read a .mad file (Post processed Madymo info )\n",
    " !               (-fma, -fmc, -fmd, -fms will columnize Madymo info )\n",
    " !  -fp FilePost Read a .pos file (Post processed info in column format)\n",
    " !  -fr FileReq  Read a .req file (Post processed Adams result file)\n",
    " !  -fa, -fc, -fd, -fs will columnize a series of .REQ files         \n",
    " !      -abs  preceding a columize option will provide absolute value max and min\n",
    " !      -all  preceding a columize option will provide \n",
    " !            absolute max and min and begin and end values\n",
    " !  -h  Help     Provide help text, (-?,-H Provide debug help) \n",
    " !  -m  Mega     Full screen instead of 80 percent of screen \n",
    " !  -p  Plot directly to 'laser printer' (has to be last option on command line)\n",
    " !        To plot once in the chart, depress F20 or 'p' \n",
    " !        ( 'P' will generate the crv.ps file and prompt to continue)\n",
    " !        [Environment variable CRV_PRINTCHAIN for alternate command]\n",
    " !  -n  NumMenu  Followed by a number, determines number of menu panes \n",
    " !  -r  Request  IDs and items                   !positional (must precede -f)\n",
    " !               Note:  Under NT use double quotes ( -r \"1052:3,1090:2\" -f )\n",
    " !  -s  Status   Offers general program info \n",
    " !  -s0 Story_0  Appends file into postscript output file \n",
    " !  -s1 Story_1  Fills story string 1 for postscript output \n",
    " !  -sn Story_n  Fills story string n for postscript output \n",
    " !  -t  Title    Prompt for major title \n",
    " !  -tm TMinMax  Tmin:Tmax                !positional prior to -f \n",
    " !  -x  Xrange   Specify X axis range, (low:high) (provide both low and high)\n",
    " !  -xl Xlabel   Specify X axis label\n",
    " !  -y  Yrange   Specify Y axis range, (low:high) (provide both low and high)\n",
    " !               (!Only applicable when display, not applicable for -fc options)\n",
    " !  -yln Ylabel   Specify Y axis label (n = 1,2,3, ...)\n",
    " !\n",
    " !      Button 2 to zoom, Button 3 or keys PF1, 'q' or 'e' to EXIT\n",
    " !\n",
    " !*****************************************************************************\n",
    "\n",
};
static_assert(std::size(help_text) == 41);

static constexpr const char *debug_help_text[] = {
    "\n",
    " !**************************************************************************\n",
    " !\n",
    " !  -d will activate debug messages  (place as first arguments) \n",
    " !        -d 441 will omit adams title on hardcopy of plot \n",
    " !\n",
    " !    01 = main             :  02 = doInitalize  :\n",
    " !    03 = doCreateWindows  :  04 = doLoadFonts  : \n",
    " !    05 = not use Fonts    :  __ =              : \n",
    " !\n",
    " !    50 = crv_AllocCht     : __ = crv_ButPress  : 20 = crv_DefColor \n",
    " !    35 = crv_DelFiles     : __ = crv_DrwGrid   : 59 = crv_DrwBarCht \n",
    " !    58 = crv_DrwLinCht    : 82 = crv_DumpChts  : 86 = crv_DumpCols \n",
    " !    19 = crv_Julian       : __ = crv_KeyPress  : 35 = crv_AllocFile()\n",
    " !    33 = crv_Listfile     : 34 = crv_ListFiles : 44 = crv_PlotData \n",
    " !    45 = crv_PlotEnd      : 42 = crv_PlotGrid  : 41 = crv_PlotHead \n",
    " !    47 = crv_PlotTxt      : 87 = crv_ReadArray : 88 = crv_ReadMad \n",
    " !    85 = crv_ReadVDR      : 83 = crv_ReadReq   : 94 = crv_ReadPost\n",
    " !    83 = crv_ReadReq      : 49 = crv_RMinMax   : __ = crv_RZoom \n",
    " !    05 = crv_SetUp        : 18 = #crv_Timer    : 46 = crv_PlotAppen\n",
    " !    __ =                  : 91 = crv_Trim      : __ = ^crv_TrimEnd \n",
    " !    93 = crv_TrimSpec     : 25 = crv_Voodoo    : 84 = crv_WriteCols \n",
    " !\n",
    " !    92 = mer_Analyze      : 89 = mer_AppFile   : 90 = mer_CatFile\n",
    " !    78 = doe_SubFile      : 77 = doe_TransFile : 88 = doe_ParseStr \n",
    " !    81 = doe_ReadLMaG     : 80 = doe_ReadLMaI  : 79 = doe_Setup \n",
    " !\n",
    " !  -B, -b for bug list,    : -s for program data \n",
    " !\n",
    " !**************************************************************************\n",
    "\n",
};
static_assert(std::size(debug_help_text) == 31);

static constexpr const char *examples_text[] = {
    "\n",
    " !**************************************************************************\n",
    " !\n",
    " !  EXAMPLE:    crv   -r 1:2,1:3   -f FILENAME.REQ\n",
    " !   chart  Request 1 item 2 on X axis, chart  Request 1 item 3 on Y axis \n",
    " !   FILENAME.REQ will be used \n",
    " !\n",
    " !  EXAMPLE:    crv    -r 0,38:3,1:1    -f \n",
    " !   chart  TIME on X axis                 \n",
    " !   chart  Request 38 item 3  and Request 1 item 1 on Y axis\n",
    " !   User will be prompted for the .REQ file to process.\n",
    " !\n",
    " !  EXAMPLE:    crv    -r 0,38:3  -f    -r 1:3  -f \n",
    " !   chart  TIME on X axis from first file                         \n",
    " !   chart  Request 38 item 3  and Request 1 item 1 on Y axis  from first file\n",
    " !   User will be prompted for the first .REQ file to process.\n",
    " !   chart  Request 1 item 3  from second file  \n",
    " !   User will be prompted for the second `.req` file to process.\n",
    " !\n",
    " !  EXAMPLE:    crv    -fg                        \n",
    " !   User will be prompted for the .VDR file to chart.\n",
    " !   Format of file is as specified in VANDOR CRV_FRM_FILE\n",
    " !\n",
    " !  EXAMPLE:    crv   -r 1,3   -fp FILENAME.POS   \n",
    " !   chart  column one and column three of the columnized file\n",
    " !   FILENAME.POS will be used                    \n",
    " !\n",
    " !  EXAMPLE:    crv   -r 1019:1,5032:3=5 -f FILENAME.REQ \n",
    " !   Return the value of request 1019 column 1 when request 5032 \n",
    " !   column 3 is equal to five in request file FILENAME.REQ\n",
    " !\n",
    " !  EXAMPLE:    crv    -r 0,38:3  -fd filename.req \n",
    " !   Columnize time and request 38 column three \n",
    " !   The result goes into file filename.dat.\n",
    " !**************************************************************************\n",
    "\n",
};
static_assert(std::size(examples_text) == 36);

static constexpr const char *bug_list[] = {
    "\n",
    " !**************************************************************************\n",
    " !\n",
    " !  -B Bugs                                          \n",
    " !  1) crv_RMinMax() second trip into routine with   \n",
    " !       same array get bogus first value on SUN.    \n",
    " !       Workaround not provided in crv_ReadVDR.     \n",
    " !       Corrected 06-02-92                          \n",
    " !  2) Passing extern struct from PLI first member   \n",
    " !       has trash.  (extern struct crv_brv_txt)     \n",
    " !\n",
    " !**************************************************************************\n",
    " \n",
};
static_assert(std::size(bug_list) == 13);

template <size_t count> static void print_lines(const char *const (&lines)[count]) {
    for (const char *line : lines) fputs(line, stdout);
}

void crv_PrintHelp() { print_lines(help_text); }

void crv_PrintDebugHelp() { print_lines(debug_help_text); }

void crv_PrintExamples() { print_lines(examples_text); }

void crv_PrintBugs() { print_lines(bug_list); }

void crv_PrintStatus(const char *program, const utl_build_info &identity) {
    printf("  \n");
    printf(" !*****************************************************************************\n");
    printf(" !\n");
    printf(" ! Program name: %s \n", program);
    printf(" ! crv  %s\n", identity.version + utl_what_prefix_length);
    printf(" ! %s %s\n", identity.compile_date + utl_what_prefix_length,
           identity.compile_time + utl_what_prefix_length);
    printf(" !\n");
    char date[32];
    utl_DateText(nullptr, 5, date, sizeof date, crv_DBG);
    printf(" ! Current date: %s\n", date);
    char system[64];
    if (utl_SystemText(system, sizeof system, crv_DBG) == 0) {
        printf(" ! Current  sys: %s\n", system);
    } else {
        printf(" ! Current  sys: NOT determined\n");
    }
    printf(" !\n");
    printf(" ! CRV_MAXCOLS : %d\n", CRV_MAXCOLS);
    printf(" !*****************************************************************************\n");
    printf("\n");
}

void crv_FinishPrinted(int status) {
    if (utl_IsOutputClosed() && utl_NoteFailure())
        fprintf(utl_ErrorStream(),
                "%%crv_05-e-out, Standard output is closed, the text or value is lost\n");
    utl_Finish(status);
}
