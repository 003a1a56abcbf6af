#include "format_samples.h"
#include "program.h"

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>

#include <csignal>

#include <sys/stat.h>

// Runs the command-line program as its users do.

using samples::Outcome;
using samples::Program;

namespace {

constexpr const char* inputs[][2] = {
    {"look.cube", "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n1 0.5 0.25\n"},
    {"mesh.cube", "Mesh 1 10\nLUT_3D_SIZE 1\n0 0 0\n"},
    {"curve.nvx1d", "From 0.0 2.0\nLength 3\n0 0.5 1\n0.5 0.5 1\n2 0.5 1\n"},
    {"bend.nvx1d", "Length 3\n0 0.5 0.25\n0.5 0.625 0.25\n0.5 1 0.75\n"},
    {"dim.nvx1d", "Length 2\n0 0 0\n0.5 0.4 0.6\n"},
    {"up.nvx1d", "Length 3\n0 0 0\n0.25 0.25 0.25\n1 1 1\n"},
    {"down.nvx1d",
     "Length 5\n0 0 0\n.5 .5 .5\n.666667 .666667 .666667\n.833333 .833333 .833333\n1 1 1\n"},
    {"order.spi1d", "From 0 1\nLength 2\nComponents 3\n{\n0 0.1 0.2\n0.8 0.9 1\n}\n"},
    {"nan.cube", "LUT_3D_SIZE 1\nnan nan 0\n"},
    {"both.cube", "LUT_1D_SIZE 3\nLUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 1 0\n1 1 0\n0 0 1\n1 0 1\n0 1 1\n"
                  "1 0.5 0.25\n0 0 0\n0.5 0.5 0.5\n1 1 0.75\n"},
    {"wide.cube", "TITLE \"d\xe4mmerung\"\r\n#\r\nDOMAIN_MIN -1 -2 -3\r\nDOMAIN_MAX 1 2 3\r\n"
                  "LUT_3D_SIZE 1\r\nnan inf 0.5\r\n"},
    {"cut.look", "<a><LUT1D><size>1</size></LUT1D><b>"},
    {"stops.cub", "# width 1 1 1\n# Cube\n0 0 0\n# oDims 2\n"},
    {"never.cub", "# Cube\n# oDims 2\n"},
    {"lacking.nvx3d", "From 0.0 1.0\nLength 2\n0 0 0\n0 0 1\n0 1 0\n"},
    {"lacking.spi3d", "SPILUT 1.0\n3 3\n2 2 2\n0 0 0 1 1 1\n"},
    {"hello.cube", "hello\n"},
    {"short.cube", "LUT_3D_SIZE 2\n0 0 0\n1 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n"},
    {"empty.cube", ""},
    {"noise.png", "noise"},
    {"pixel.ppm", "P6 1 1 65535\nabcdef"},
    {"unknown.zzz", "LUT_3D_SIZE 2\n"},
};

/// One run in the folder with the input files.
struct Run {
    const char* line;
    int status;
    const char* told;         ///< the beginning of each message, with a | after each but the last
    const char* printed = ""; ///< a part of standard output, which must otherwise be empty
};

constexpr Run runs[] = {
    {"", 2, "no command given"},
    {"- look.cube", 2, "unknown command \"-\""},
    {"help", 0, "",
     "\n  convert   IN OUT                  Convert tables to another format, size or order.\n"},
    {"-V", 0, "", "tintwell-cli 0.1.0\n"},
    {"help info", 0, "", "Usage: tintwell-cli info [options] FILE...\n"},
    {"help covnert", 2, "unknown command \"covnert\"; did you mean convert?"},
    {"convert -h", 0, "",
     "Usage: tintwell-cli convert [options] IN OUT\n"
     "       tintwell-cli convert [options] --to FORMAT --output-directory DIR IN...\n"
     "Convert tables to another format, size or order.\n\nOptions:\n"},
    {"formats", 0, "", "\n   3  3dl        3D    yes    no      3dl                        .3dl\n"},
    {"info --colour look.cube", 2, "Unknown option 'colour'."},
    {"info", 2, "found 0 operands, expected FILE..."},
    {"formats a", 2, "found 1 operand, expected none"},
    {"merge a b", 2, "found 2 operands, expected FIRST SECOND... OUT"},
    {"convert look.cube o.cube --to 99", 2, "unknown format \"99\" (see tintwell-cli formats)"},
    {"convert look.cube --output-directory o", 2, "--output-directory needs --to"},
    {"convert look.cube o.cube --to=", 2, "found --to with an empty value"},

    // Input
    {"info none.cube", 1, "none.cube: No such file or directory"},
    {"info .", 1, ".: is a folder, expected a file"},
    {"info --from cube -", 0, "", "\n  header    LUT_3D_SIZE 2\n"},
    {"info -", 1, "-: standard input needs --from"},
    {"check --from cube - look.cube /dev/stdin", 1, "/dev/stdin: found standard input twice"},
    {"convert - --from cube --to spi3d --size 3 -", 0, "", "\n1 1 1 0.500000 0.250000 0.125000\n"},
    {"convert - --from cube --to itx --output-directory o", 2, "standard input has no name"},
    {"info deep.png", 1,
     "deep.png: found an image of 2 x 2 pixels, expected a width of the height squared, or a"},
    {"info short.cube", 1, "short.cube:7: the file ends after 6 samples, expected 8"},
    {"info empty.cube", 1, "empty.cube: found no table, expected .cube"},
    {"info never.cub", 1, "never.cub:2: found \"# oDims 2\", expected three dimensions"},
    {"info noise.png", 1, "noise.png: is not an image of a known type (png bmp tif tiff jpg jpeg)"},
    {"info unknown.zzz", 1, "unknown.zzz: found the extension \"zzz\", expected a known one"},
    {"info --from tube look.cube", 2, "unknown format \"tube\" (see tintwell-cli formats)"},
    {"info --from davlut look.cube", 1, "look.cube: found no size, expected a 3DLUTSIZE line"},
    {"info data/sample_plain.lut", 0, "", "\n  format    lut ("},
    {"info data/sample_discreet.lut", 0, "", "\n  scale     0 to 1023\n"},
    {"info data/sample.3dl", 0, "", "\n  scale     0 to 1023\n"},
    {"info data/sample.mga", 0, "", "\n  scale     0 to 4095\n"},
    {"info data/sample.csv", 0, "", "\n  scale     0 to 1023\n"},
    {"info data/texture.png", 0, "", "\n  size      16 x 16 x 16\n  scale     0 to 255\n"},
    {"info data/unwrapped.png", 0, "", "\n  format    unwrapped ("},
    {"info cut.look", 0, "", "\n            1: Premature end of document.\n"},
    {"info stops.cub", 0, "", "4: found \"# oDims 2\", expected three dimensions\n"},
    {"info hello.cube", 1, "hello.cube: found no sample, expected .cube"},
    {"info --strict lacking.nvx3d", 1, "", "            found 3 of 8 samples; the rest is black\n"},
    {"check look.cube data/sample.cube", 0, ""},
    {"check lacking.spi3d look.cube stops.cub none.cube", 1, "none.cube: No such file or directory",
     "lacking.spi3d: found 1 of 8 samples; the rest is black\n"
     "stops.cub:4: found \"# oDims 2\", expected three dimensions\n"
     "stops.cub: the 3D table has a single point: it maps all colours to one\n"},
    {"convert --strict stops.cub o.itx", 1,
     "stops.cub:4: note: found \"# oDims 2\", expected three dimensions|stops.cub: note: the 3D |"
     "o.itx: not written: --strict allows no notes"},
    {"apply --strict stops.cub good.png o.png", 1,
     "stops.cub:4: note: |stops.cub: note: the 3D |"
     "o.png: not written: --strict allows no notes"},
    {"apply --strict look.cube deep.png o.jpg", 1,
     "o.jpg: note: stores only|o.jpg: note: stores|"
     "o.jpg: not written: --strict allows no notes"},
    {"info o.itx", 1, "o.itx: No such"},
    {"info --from unwrapped o.jpg", 1, "o.jpg: No such"},

    // Output
    {"convert look.cube o.zzz", 2, "o.zzz: found the extension \"zzz\", expected a known one"},
    {"convert look.cube .", 2, ".: is a folder, expected a file"},
    {"convert look.cube o.3dl", 2, "the format 3dl can be read, but not written"},
    {"convert look.cube o.lut", 2, "o.lut: the format may be discreet or lut, expected --to"},
    {"convert data/sample_discreet.lut same.lut", 0, "same.lut: note: other programs expect int"},
    {"info same.lut", 0, "", "\n  format    discreet ("},
    {"convert look.cube", 2, "found no output, expected IN OUT"},
    {"convert a.cube b.cube c.cube", 2, "several inputs need --output-directory"},
    {"convert --to itx --output-directory look.cube/o look.cube", 1,
     "look.cube/o: the folder cann|1 of 1 file failed"},
    {"convert look.cube look.cube", 1, "look.cube: exists already (--force replaces it)"},
    {"identity no/o.cube", 1, "no/o.cube: not written: No such file or directory"},
    {"identity --force pipe.cube", 1, "pipe.cube: is a pipe or socket, expected a file"},
    {"identity --force nowhere.cube", 1, "nowhere.cube: is a link that leads nowhere"},
    {"identity --to cube /dev/full", 1, "/dev/full: not written: No space left on device"},
    {"identity --to cube --size 2 /dev/stdout", 0, "", "LUT_3D_SIZE 2\n"},

    // Files that exist already
    {"convert look.cube dry.itx --dry-run", 0, "", "look.cube: would be written to dry.itx\n"},
    {"convert none.cube dry.itx --dry-run", 1, "none.cube: No such file or directory"},
    {"convert look.cube data/../look.cube --dry-run --output-directory no --to itx", 1,
     "data/../look.cube: another input is already written to look.itx|1 of 2 files failed",
     "look.cube: would be written to no/look.itx\n"},
    {"convert look.cube dry.itx --quiet", 0, ""},
    {"convert stops.cub --quiet --to itx -", 0, "", "3D_SIZE"},
    {"convert stops.cub o.itx --quiet --strict", 1, "stops.cub:4: note|stops.cub: note|o.itx: not"},
    {"convert look.cube dry.itx --skip-existing", 0, "1 of 1 file skipped"},
    {"convert look.cube dry.itx --quiet", 1, "dry.itx: exists already (--force replaces it)"},
    {"convert look.cube dry.itx --update --force", 2, "--update and --force exclude each other"},
    {"convert look.cube --to itx --json -", 2, "--json and an output to standard output excl"},

    // Sizes and kinds
    {"identity o.cube --size many", 2, "found --size many, expected a whole number from 2 to 1048"},
    {"identity o.cube --size 1", 2, "found --size 1, expected a whole number from 2"},
    {"identity o.cube --size 257", 2, "found --size 257, expected 2 to 256 for cube"},
    {"convert look.cube o.cube --jobs 257", 2, "found --jobs 257, expected a whole number from 1"},
    {"convert none.cube o.cube --size 256 --jobs 256", 1, "none.cube: No such file"},
    {"identity o.cube", 0, ""},
    {"info o.cube", 0, "", "\n  size      33 x 33 x 33\n"},
    {"identity --to nvx1d -", 0, "", "Length 1024\n0 0 0 \n"},
    {"identity --to 7 -", 0, "", "\n255\t1\t1\t1"},
    {"convert look.cube --to spi3d --size 3 -", 0, "", "\n1 1 1 0.500000 0.250000 0.125000\n"},
    {"convert bend.nvx1d --to spi3d --size 2 -", 0,
     "bend.nvx1d: note: the 1D table becomes a lattice of 2 points per axis|"
     "bend.nvx1d: note: between its points the new table is off by up to 0.25",
     "0 1 1 0.000000 1.000000 0.750000\n1 0 0 0.500000 0.500000 0.250000\n"},
    {"convert bend.nvx1d --to itx --size 4 -", 0,
     "bend.nvx1d: note: the 1D table becomes a lattice of 4 points per axis|bend.nvx1d: note: "
     "between its points the new table is off by up to 0.0833333; 17 points per axis would keep it",
     "_SIZE 4"},
    {"info --sizes look.cube", 0, "",
     "\n  sizes     17: off by up to 0\n            25: off by up "},
    {"convert up.nvx1d --to nvx3d -", 0, "up.nvx1d: note: the 1D table becomes", "Length 33\n"},
    {"convert look.cube --to nvx1d -", 0,
     "look.cube: note: only the grey axis of the 3D table is kept, in 1024 entries", "gth 1024\n"},
    {"convert look.cube --to nvx1d --size 3 -", 0, "look.cube: note: only the grey axis",
     "Length 3\n0 0 0 \n0.5 0.25 0.125 \n1 0.5 0.25 \n"},
    {"convert both.cube --to spi3d -", 0,
     "both.cube: note: the file has|both.cube: note: only the 3D table is used",
     "\n1 1 1 1.000000 0.500000 0.250000\n"},
    {"convert both.cube --to nvx1d -", 0,
     "both.cube: note: the file has|both.cube: note: only the 1D table is used",
     "Length 3\n0 0 0 \n0.5 0.5 0.5 \n1 1 0.75 \n"},
    {"convert wide.cube --to itx -", 0,
     "wide.cube: note: the domain of the 3D table is -1 -2 -3 to 1 2 3|wide.cube: note: 2 numbers|"
     "wide.cube: note: the 3D table has a single point|"
     "-: note: the domain -1 -2 -3 to 1 2 3 is not written|-: note: the title \"d",
     "3D_SIZE"},

    // Orders
    {"convert look.cube o.cube --in-order gbr", 2, "found --in-order gbr, expected rgb, bgr, "},
    {"convert look.cube --to itx --out-order bgr -", 0, "", "\n0.250000 0.500000 1.000000\n"},
    {"convert look.cube --to itx --in-order bgr -", 0, "", "\n0.250000 0.500000 1.000000\n"},
    {"convert look.cube --to itx --out-order blue-fastest -", 0, "",
     "\n1.000000 1.000000 0.000000\n1.000000 0.500000 0.250000\n"},
    {"convert look.cube --to itx --in-order blue-fastest -", 0, "",
     "\n1.000000 1.000000 0.000000\n1.000000 0.500000 0.250000\n"},
    {"convert look.cube --to itx --in-order bgr,blue-fastest --out-order blue-fastest,bgr -", 0, "",
     "\n0.000000 1.000000 1.000000\n1.000000 0.500000 0.250000\n"},
    {"convert order.spi1d --to nvx1d --in-order rgb -", 0, "", "\n0 0.1 0.2 \n"},
    {"convert order.spi1d --to nvx1d --in-order bgr -", 0, "", "\n0.2 0.1 0 \n"},
    {"convert order.spi1d --to nvx1d --out-order bgr,blue-fastest -", 0, "", "\n0.2 0.1 0 \n"},
    {"info look.cube --in-order bgr,blue-fastest", 0, "", "\n  order     bgr,blue-fastest\n"},

    // Scales
    {"convert look.cube --to mga --scale 1023 -", 0,
     "-: note: rounding changes samples by up to 0.000733138", "\n7\t1023\t511\t255\t\n"},
    {"convert look.cube --to itx --scale 2 -", 0, "-: note: --scale has no effect", "1.00"},
    {"convert look.cube --to cube --scale 9 -", 0, "-: note: the file does not|-: note: rou",
     "\n9 4 2 \n"},
    {"identity --to csv --size 2 -", 0, "", "0,\t0\n1,\t65535"},
    {"identity --to csv --size 2 --scale 3 -", 0, "", "1,\t3"},
    {"identity --to csv --size 2 --scale 16777215 -", 0, "", "1,\t16777215"},
    {"identity --to csv --scale 33554431 -", 2, "found --scale 33554431, expected a power of two"},
    {"identity --to csv --scale 1000 -", 2, "found --scale 1000, expected a power of two less one"},
    {"identity --to csv --scale 1 -", 2, "found --scale 1, expected a power of two less one"},
    {"identity --to csv --scale 0 -", 2, "found --scale 0, expected a whole number from 1 to "},
    {"convert dim.nvx1d --to csv -", 0,
     "-: note: the last value, 0.5, gives readers a wrong scale|"
     "-: note: csv has one curve: only the red one is written|-: note: rounding changes",
     "0,\t0\n1,\t32767"},
    {"convert dim.nvx1d --to discreet -", 0,
     "-: note: readers take the largest value, 0.6|-: note: other programs expect integers",
     "LUT: 3 2\n"},
    {"identity --to discreet --size 256 --scale 255 -", 0, "", "\n     255\n"},
    {"convert order.spi1d --to discreet -", 0, "-: note: other programs",
     "LUT: 3 2\n     0\n     0.8\n     0.1\n"},
    {"convert up.nvx1d --to lut --size 2 -", 0,
     "up.nvx1d: note: between its points|-: note: found 2 entries, but", "\n1\t1\t1\t1"},
    {"convert curve.nvx1d --to spi1d --scale 3 -", 0,
     "curve.nvx1d: note: the range of the 1D table is 0 to 2|-: note: rounding changes|"
     "-: note: other programs take From as the range of the inputs",
     "\n        3 0 1 \n"},
    {"convert look.cube o.spi3d --verify", 0, "o.spi3d: read again, it is the same"},
    {"convert look.cube v.mga --verify --scale 10 --out-order bgr", 0,
     "v.mga: note: rounding changes samples by up to 0.05|"
     "v.mga: read again, it is off by up to 0.05"},
    {"convert order.spi1d o.spi1d --verify --out-order bgr", 0, "o.spi1d: read again, it is the "},
    {"convert look.cube v.cube --verify --scale 9", 1,
     "v.cube: note: the file|v.cube: note: rou|"
     "v.cube: not written: read again, it is off by up to 0.75, expected at most 1e-06"},
    {"info v.cube", 1, "v.cube: No such file"},

    // Two tables
    {"merge none.3dl look.cube o.cube", 1, "none.3dl: No such file or directory"},
    {"merge look.cube none.3dl o.cube", 1, "none.3dl: No such file or directory"},
    {"merge look.cube data/sample.3dl --to spi3d -", 0, "", "\n2 2 2 0.999022 0.499511 0.288856\n"},
    {"merge bend.nvx1d look.cube --to spi3d -", 0, "-: note: between its points",
     "\n1 1 1 0.500000 0.750000 0.375000\n"},
    {"merge look.cube bend.nvx1d --to spi3d -", 0, "-: note: between its points",
     "\n1 1 1 0.500000 0.625000 0.250000\n"},
    {"merge wide.cube both.cube --to nvx1d -", 0,
     "wide.cube: note: the domain|wide.cube: note: 2 numbers|wide.cube: note: the 3D|"
     "both.cube: note: the file has both tables|"
     "both.cube: note: only the 3D table is used; the file has both kinds|-: note: the domain|"
     "-: note: the title|-: note: only the grey axis of the merged table is kept, in 1024 entries",
     "Length 1024\n"},
    {"merge up.nvx1d down.nvx1d --to nvx1d -", 0, "",
     "Length 5\n0 0 0 \n0.25 0.25 0.25 \n0.5 0.5 0.5 \n"},
    {"merge bend.nvx1d look.cube bend.nvx1d dim.nvx1d --to spi3d -", 0,
     "-: note: between its points", "\n1 1 1 0.250000 0.325000 0.150000\n"},
    {"merge up.nvx1d down.nvx1d lattice.itx --size 9", 0,
     "lattice.itx: note: the 1D tables become a lattice of 9 points per axis"},
    {"info lattice.itx", 0, "", "\n  identity  yes\n"},
    {"convert --to cube --dry-run look.cube .", 1, ".: is a folder, expected a file"},
    {"evaluate --from cube -", 2, "standard input is the table"},

    {"compare look.cube order.spi1d --tolerance -1", 2, "found --tolerance -1, expected a number"},
    {"compare look.cube look.cube --picture o.txt", 2, "o.txt: found the extension \"txt\", expec"},
    {"compare look.cube none.3dl", 1, "none.3dl: No such file or directory"},
    {"compare --strict look.cube nan.cube", 1,
     "nan.cube: note: 2|nan.cube: note: the 3D|nan.cube: not compared: --strict allows no notes"},
    {"compare both.cube look.cube --tolerance 0", 0,
     "both.cube: note: the file has|both.cube: note: only the 3D table is used",
     "compared   point by point, 3D, 2 points per axis\nidentical  yes\n"},
    {"compare bend.nvx1d dim.nvx1d --tolerance 0.59", 1,
     "dim.nvx1d: found a difference of up to 0.6, expected at most 0.59",
     R"(compared   evaluated in 3 entries, inputs 0 to 1
identical  no
           largest      mean         RMS
red        0.25         0.0833333    0.144338
green      0.6          0.508333     0.513363
blue       0.25         0.15         0.170783
where      input 1 1 1 (entry 2)
first      0.5 1 0.75
second     0.5 0.4 0.6
)"},
    {"compare up.nvx1d look.cube", 0, "",
     "in 2 points per axis, inputs 0 to 1\nidentical  no\n           largest      mean         "
     "RMS\nred        0            0            0\ngreen      0.5          0.0625 "},
    {"compare nan.cube nan.cube --tolerance 0", 0,
     "nan.cube: note: 2|nan.cube: note: |nan.cube: "
     "note: 2|nan.cube: note: ",
     "\nidentical  yes\n"},
    {"compare wide.cube nan.cube", 0,
     "wide.cube: note: the d|wide.cube: note: 2|wide.cube: note: t"
     "|nan.cube: note: 2|nan.cube: note: ",
     "compared   evaluated in 1 point per axis, inputs -1 -2 -3 to 1\nidentical  no\n"
     "infinite   1 difference\n           largest      mean         RMS\n"
     "red        0            0            0\ngreen      inf          inf          inf\n"
     "blue       0.0833333    0.0833333    0.0833333\nwhere      input -1 -2 -3 (point 0 0 0)\n"},

    // Colours
    {"evaluate look.cube -0.1 1 1e0 -inf .5 1 --json", 0, "",
     "[\n    {\"in\": [-0.1, 1, 1], \"out\": [0, 1, 1]},\n"
     "    {\"in\": [null, 0.5, 1], \"out\": [0, 0.5, 1]}\n]\n"},
    {"evaluate up.nvx1d 0.1 -- 0.75 -nan", 0, "", "0.05 0.625 0\n"},
    {"evaluate look.cube 1 -0.1x 1", 2, "found \"-0.1x\", expected a number"},
    {"evaluate look.cube 1 2", 2, "found 2 numbers, expected three for each colour"},
    {"evaluate --strict nan.cube 1 1 1", 1,
     "nan.cube: note: 2|nan.cube: note: the 3D|nan.cube: not evaluated: --strict allows no notes"},

    // Images
    {"apply look.cube noise.png o.png", 1, "noise.png: is not an image of a known type"},
    {"apply short.cube good.png o.png", 1, "short.cube:7: the file ends"},
    {"apply look.cube - o.png", 1, "-: is not an image of a known type"},
    {"apply look.cube good.png .", 2, ".: is a folder, expected a file"},
    {"apply look.cube good.png no/o.png", 1, "no/o.png: not written: No such file"},
    {"apply look.cube good.png good.png", 1, "good.png: exists already"},
    {"apply look.cube good.png o.txt", 2, "o.txt: found the extension \"txt\", expected one of"},
    {"apply look.cube good.png", 2, "found no output, expected LUT IN-IMAGE OUT-IMAGE"},
    {"apply look.cube good.png o.png p.png", 2, "several images need --output-directory"},
    {"apply look.cube good.png o.png --to txt", 2, "--to: found the extension \"txt\""},
    {"apply look.cube good.png o.png --compression 10", 2, "found --compression 10, expected a"},
    {"apply look.cube pixel.ppm o.png", 1, "pixel.ppm: is a PPM image or the like, expected one"},
    {"apply look.cube float.tif o.png", 1, "float.tif: holds 32-bit floating-point samples, exp"},
    {"apply look.cube half.tif o.png", 1, "half.tif: holds 16-bit floating-point samples, expec"},
    {"apply look.cube good.png c.jpg --compression 1", 0, "c.jpg: note: --compression has no eff"},
    {"apply look.cube deep.png deep.ppm", 0,
     "deep.ppm: note: stores only 8 of the 16|deep.ppm: note: stores no alpha channel"},
    {"apply look.cube deep.png deep.bmp", 0,
     "deep.bmp: note: stores only 8 of the 16 bits per channel|"
     "deep.bmp: note: stores no alpha channel"},
    {"apply look.cube good.png good.bmp", 0, ""},
    {"apply --strict look.cube good.png grey.pgm", 1,
     "grey.pgm: note: stores no colours|grey.pgm: not written: --strict allows no notes"},
    {"apply both.cube good.png both.png", 0,
     "both.cube: note: the file has|both.cube: note: only t"},
    {"convert nan.cube --to mga --scale 9 -", 0,
     "nan.cube: note: 2 numbers of|nan.cube: note: the 3D table has a|"
     "-: note: integers cannot hold samples that are not finite",
     "in 1"},
    {"apply look.cube deep.png same.png", 0, ""},

    // What tables hold
    {"info curve.nvx1d", 0, "", R"(curve.nvx1d
  format    nvx1d (.nvx1d norvane专用格式1D)
  kind      1D
  size      3 entries
  range     0 to 2
  red       0 to 1
  green     0.25 to 0.25
  blue      0.5 to 0.5
  identity  no, off by up to 0.75
  order     rgb
  header    From 0.0 2.0
            Length 3
  note      the From range is that of the samples, not of the input
            the range of the 1D table is 0 to 2: the samples are divided by 2)"},
    {"info wide.cube", 0, "", R"(
  domain    -1 -2 -3 to 1 2 3
  red       no finite numbers
  green     0.5 to 0.5
  blue      0.0833333 to 0.0833333
  identity  no, off by up to 0.5
  order     rgb,red-fastest
  header    TITLE "d�mmerung"
            DOMAIN_MIN -1 -2 -3
            DOMAIN_MAX 1 2 3
            LUT_3D_SIZE 1
  note      the domain of the 3D table is -1 -2 -3 to 1 2 3: )"},
    {"info data/sample.cub", 0, "", R"(
  identity  no, off by up to 0.25
  kind      1D
  size      4 entries
  scale     0 to 2
)"},
    {"info nan.cube", 0, "", "\n  identity  no\n  order     rgb,red-fastest\n"},
    {"info mesh.cube", 0, "", "\n  note      a Mesh line declares integer samples\n"},
};

void check(const Run& row, const Outcome& outcome) {
    QCOMPARE(outcome.status, row.status);
    QVERIFY2(outcome.output.contains(row.printed) && outcome.output.isEmpty() == !*row.printed,
             qPrintable(outcome.output));
    const QString command = QString(row.line).section(' ', 0, 0);
    const QString help = row.status == 2 ? "|see tintwell-cli " + command : QString();
    const QStringList told = (row.told + help).split('|', Qt::SkipEmptyParts);
    const QStringList lines = outcome.errors.split('\n', Qt::SkipEmptyParts);
    QVERIFY2(lines.size() == told.size(), qPrintable(outcome.errors));
    for (int n = 0; n < told.size(); ++n) {
        QVERIFY2(lines[n].startsWith("tintwell-cli: " + told[n]), qPrintable(outcome.errors));
    }
}

} // namespace

class TestCli : public QObject {
    Q_OBJECT

    samples::Folder m_folder;

    Outcome run(const QString& line) const {
        Program program(m_folder);
        program.setStandardInputFile(m_folder.path("look.cube"));
        return program.run(line);
    }

private Q_SLOTS:
    void initTestCase() {
        for (const auto& [name, content] : inputs) {
            m_folder.file(name, content);
        }
        QImage image(2, 2, QImage::Format_RGBA64);
        image.fill(Qt::transparent);
        QVERIFY(image.save(m_folder.path("deep.png")));
        for (const auto& [name, bits] : {std::pair("float.tif", '\x20'), {"half.tif", '\x10'}}) {
            QByteArray tiff("MM\0*\0\0\0\x8\0\2\1\2\0\3\0\0\0\1\0\0\0\0", 22);
            tiff[19] = bits;
            m_folder.file(name, tiff + QByteArray("\1\x53\0\3\0\0\0\1\0\3\0\0\0\0\0\0", 16));
        }
        QVERIFY(QFile::copy(TINTWELL_TEST_DATA "/texture.png", m_folder.path("good.png")));
        QCOMPARE(mkfifo(qPrintable(m_folder.path("pipe.cube")), 0600), 0);
        QVERIFY(QFile::link(m_folder.path("gone.cube"), m_folder.path("nowhere.cube")));
        QVERIFY(QFile::link(TINTWELL_TEST_DATA, m_folder.path("data")));
    }

    void runsAsDescribed_data() {
        QTest::addColumn<int>("row");
        for (int n = 0; n < int(std::size(runs)); ++n) {
            QTest::newRow(runs[n].line) << n;
        }
    }
    void runsAsDescribed() {
        QFETCH(int, row);
        check(runs[row], run(runs[row].line));
    }

    void printsJson() {
        const auto parsed = [](const Outcome& outcome) {
            const bool whole = outcome.output.endsWith("]\n");
            return whole ? QJsonDocument::fromJson(outcome.output.toUtf8()) : QJsonDocument();
        };
        QCOMPARE(parsed(run("formats --json")).array().size(), tintwell::formatCount);
        const QJsonDocument checked = parsed(run("check --json none.cube stops.cub"));
        QCOMPARE(checked[0]["error"].toString(), "No such file or directory");
        QCOMPARE(checked[1]["path"].toString() + checked[1]["format"].toString(), "stops.cubcub");
        QCOMPARE(checked[1]["remarks"].toArray().size(), 2);
        const Outcome compared = run("compare --json nan.cube mesh.cube");
        const QJsonDocument comparison = QJsonDocument::fromJson(compared.output.toUtf8());
        QCOMPARE(comparison["nonFinite"].toInt(), 2);
        QVERIFY(comparison["largest"][0].isNull() && comparison["rms"][2] == 0.0);
        QCOMPARE(comparison["where"]["second"].toArray(), QJsonArray({0, 0, 0}));
        const Outcome outcome = run("info --json curve.nvx1d none.cube");
        QCOMPARE(outcome.status, 1);
        QCOMPARE(parsed(outcome)[0]["remarks"].toArray().size(), 1);
        QCOMPARE(parsed(outcome)[1]["error"].toString(), "No such file or directory");
        QCOMPARE(
            QJsonDocument(parsed(outcome)[0]["tables"].toArray()).toJson(QJsonDocument::Compact),
            R"([{"identity":false,"kind":"1D","max":[1,0.25,0.5],"maxDeviation":0.75,)"
            R"("min":[0,0.25,0.5],"nonFinite":0,"rangeMax":[2,2,2],"rangeMin":[0,0,0],)"
            R"("size":3}])");
    }

    /// From every format to itself, or to itx if it has no writer.
    void formatsByName() {
        for (const tintwell::Format& format : tintwell::catalogue) {
            const QString sample = samples::sampleOf(codeOf(format)).file;
            const char* const to = format.write != nullptr ? format.name : "itx";
            const QString line = QString("convert --force --from %1 --to %2 data/%3 named");
            QVERIFY2(run(line.arg(format.name, to, sample)).status == 0, format.name);
        }
    }

    /// Every writer, in its own order and in the other of each pair. What is written in its own
    /// order compares as it verifies.
    void verifiesWhatIsWritten() {
        m_folder.file("skew.nvx1d",
                      "Length 256\n" + QByteArray("0.5 0.25 0.75\n").repeated(255) + "1 1 1\n");
        for (const tintwell::Format& format : tintwell::catalogue) {
            const char* const in =
                format.kind == tintwell::TableKind::OneD ? "skew.nvx1d" : "look.cube";
            for (const char* orders : {"", "--out-order bgr", "--out-order rgb,red-fastest",
                                       "--scale 255 --out-order bgr,blue-fastest"}) {
                if (format.write == nullptr) {
                    continue;
                }
                const QString to = "verified." + extensionsOf(format).first();
                const QString line = QString("convert --force --verify --to %1 %2 %3 " + to);
                const Outcome outcome = run(line.arg(format.name, orders, in));
                const QString compare = QString("compare --tolerance 0.000001 %1 ").arg(in) + to;
                QVERIFY(*orders != 0 || outcome.status != 0 || run(compare).status == 0);
                const bool scaleUntold =
                    format.traits.integers == tintwell::IntegerSamples::ScaleLost;
                const bool isExact = format.code != tintwell::FormatCode::Csv &&
                                     !(scaleUntold && *orders == '-' && orders[2] == 's');
                QVERIFY2(outcome.status == (isExact ? 0 : 1), qPrintable(line + outcome.errors));
                QVERIFY(outcome.errors.contains("read again, it is"));
            }
        }
    }

    void batches() {
        const QString convert = "convert --force --to spi3d --output-directory new/out ";
        check(
            {"", 1, "short.cube:7: the file ends after 6 samples, expected 8|1 of 3 files failed"},
            run(convert + "--jobs 4 short.cube look.cube data/sample.itx"));
        check({"", 1, "none.cube: No such file|1 of 1 file failed"}, run(convert + "none.cube"));
        check({"", 0, "mesh.cube: note: the 3D table has a single point"},
              run(convert + "--jobs 2 look.cube mesh.cube"));
        check({"", 1, "look.cube: another input is already written to look.spi3d|1 of 2 files "},
              run(convert + "look.cube look.cube"));
        QCOMPARE(QDir(m_folder.path("new/out")).entryList(QDir::Files),
                 QStringList({"look.spi3d", "mesh.spi3d", "sample.spi3d"}));
    }

    void evaluatesLines() {
        const auto evaluated = [&](const QByteArray& lines) {
            Program program(m_folder);
            program.setStandardInputFile(m_folder.file("lines", lines));
            return program.run("evaluate look.cube");
        };
        check({"", 1, "standard input:5: found \"1 1 x\", expected three numbers", "0 1 1\n1 0.7"},
              evaluated("\xEF\xBB\xBF# none\n\n -0.1\t1 +1\r\n1 1 .5#one\n1 1 x\n1 1 1\n"));
        check({"", 1, "standard input:1: found a line of more"},
              evaluated(QByteArray(70'000, '1')));
        const Outcome many = evaluated(QByteArray("1e-3 0.1 1e-50\n").repeated(30'000) + "0 0 0");
        QVERIFY(many.output == QString("0.001 0.1 0\n").repeated(30'000) + "0 0 0\n");
    }

    void batchesAgain() {
        const auto statuses = [this](const QString& options) {
            QStringList found;
            const Outcome outcome = run(options + " --json --output-directory again");
            for (const QJsonValue entry :
                 QJsonDocument::fromJson(outcome.output.toUtf8()).array()) {
                found += entry["status"].toString() + entry["error"].toString().section(' ', 0, 0);
            }
            return found.join(' ');
        };
        const auto touch = [this](const QString& name, int seconds) {
            QFile file(m_folder.path(name));
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(2'000'000'000 + seconds),
                                     QFileDevice::FileModificationTime));
        };
        const QString convert = "convert --to spi3d look.cube none.cube mesh.cube ";
        QCOMPARE(statuses(convert + "--dry-run"), "planned failednone.cube: planned");
        QVERIFY(!QDir(m_folder.path("again")).exists());
        QCOMPARE(statuses(convert + "--jobs 3"), "converted failednone.cube: converted");
        QCOMPARE(statuses(convert),
                 "failedagain/look.spi3d: failednone.cube: failedagain/mesh.spi3d:");
        QCOMPARE(statuses(convert + "--skip-existing"), "skipped failednone.cube: skipped");
        touch("look.cube", 1);
        QCOMPARE(statuses(convert + "--update"), "converted failednone.cube: skipped");
        touch("again/look.spi3d", 1);
        QCOMPARE(statuses(convert + "--update"), "skipped failednone.cube: skipped");
        const QString apply = "apply look.cube good.png noise.png deep.png ";
        QCOMPARE(statuses(apply), "converted failednoise.png: converted");
        touch("again/deep.png", 1);
        QCOMPARE(statuses(apply + "--update"),
                 "converted failednoise.png: skipped"); // the table's
        QCOMPARE(statuses("apply none.cube good.png --update"), "failednone.cube:");
        m_folder.file("again/none.spi3d", "old"); // which is no reason to take none.cube as done
        QCOMPARE(statuses(convert + "--update"), "skipped failednone.cube: skipped");
        touch("look.cube", 2);
        QCOMPARE(statuses("apply look.cube again/deep.png --update"), "failedagain/deep.png:");
        QCOMPARE(statuses("convert --to spi3d --force look.cube again/look.spi3d"),
                 "failedagain/look.spi3d: failedagain/look.spi3d:");
    }

    /// Files are whole or absent after an interruption, and a second run makes the rest.
    void batchesGoOn() {
        QVERIFY(QDir(m_folder.path("")).mkdir("many"));
        QString line = "convert --to spi3d --skip-existing --output-directory ended";
        for (int n = 0; n < 400; ++n) {
            line += QString(" many/%1.cube").arg(n);
            m_folder.file(QString("many/%1.cube").arg(n), inputs[0][1]);
        }
        const auto ended = [this] { return QDir(m_folder.path("ended")).entryList(QDir::Files); };
        Program program(m_folder);
        program.begin(line);
        QTRY_VERIFY(ended().size() > 3);
        kill(pid_t(program.processId()), SIGINT);
        QVERIFY(program.waitForFinished() && program.exitStatus() == QProcess::CrashExit);
        const int before = ended().size();
        QVERIFY(before < 400);
        QVERIFY(run(line).errors.contains(QString(": %1 of 400 files skipped").arg(before)));
        QCOMPARE(ended().size(), 400);
        for (const QString& name : ended()) {
            QCOMPARE(m_folder.content("ended/" + name), m_folder.content("ended/0.spi3d"));
        }
    }

    void printsToFullDisks() {
        for (const char* line :
             {"formats", "formats --json", "--help", "info -h", "--version", "info look.cube",
              "compare look.cube look.cube", "evaluate look.cube 1 1 1"}) {
            Program program(m_folder);
            program.setStandardOutputFile("/dev/full");
            check({line, 1, "standard output: not written: "}, program.run(line));
        }
    }

    void namesMoveNoCursor() {
        const QString name = QString::fromUtf8("a\n\033[2J\u202E\tb.cube");
        const QString shown = "a\\u000a\\u001b[2J\\u202e\tb.cube";
        QCOMPARE(run("info " + name).errors,
                 "tintwell-cli: " + shown + ": No such file or directory\n");
        m_folder.file(name, "LUT_3D_SIZE 1\n0 0 0\n");
        QCOMPARE(run("info " + name).output.split('\n').first(), shown);
        const QString json = run("info --json " + name).output;
        QVERIFY(!json.contains(QChar(0x202E)));
        QCOMPARE(QJsonDocument::fromJson(json.toUtf8())[0]["path"].toString(), name);
    }

    void surroundings() {
        QVERIFY(run("info --verbose look.cube").errors.contains("file:-----"));
        // A name in UTF-8 in a bare locale, an output that the shell has made, a name in
        // Latin-1.
        const QString script =
            "cd \"$1\"; export LC_ALL=C; name=$(printf 'd\\303\\244.cube'); "
            "\"$0\" identity --size 2 $name; "
            "\"$0\" convert $name out.cube >out.cube && cmp $name out.cube && "
            "{ \"$0\" convert --to itx --output-directory $(printf 'd\\344') $name; test $? = 2; }";
        QCOMPARE(QProcess::execute("sh", {"-c", script, TINTWELL_CLI, m_folder.path("")}), 0);
    }
};

QTEST_GUILESS_MAIN(TestCli)
#include "test_cli.moc"
