#include "workspace/frame/command_table.h"

#include <array>

namespace tavlo {

namespace {

constexpr const char* file = "&File";
constexpr const char* edit = "&Edit";
constexpr const char* options = "&Options";
constexpr const char* analysis = "&Analysis";
constexpr const char* window = "&Window";
constexpr const char* help = "&Help";

constexpr auto entries = std::to_array<MenuEntry>({
    {1, "&File|&New", "&Project", "Ctrl+N"},
    {2, "&File|&New", "&Data/Fit", ""},
    {3, "&File|&New", "&Chart", ""},
    {4, file, "&Open", "Ctrl+O"},
    {5, file, "&Save", "Ctrl+S"},
    {6, file, "Save &As", ""},
    {0, file, "", ""},
    {7, file, "&Print", "Ctrl+P"},
    {8, file, "Print Pre&view", ""},
    {9, file, "Print Set&up", ""},
    {0, file, "", ""},
    {10, file, "Setup/&Language", ""},
    {11, file, "Li&brary", ""},
    {0, file, "", ""},
    {12, file, "E&xit", "Ctrl+Q"},

    {13, edit, "Select &All", "Ctrl+A"},
    {14, edit, "Cu&t", "Ctrl+X"},
    {15, edit, "&Copy", "Ctrl+C"},
    {16, edit, "&Paste", "Ctrl+V"},
    {0, edit, "", ""},
    {18, edit, "&Undo", "Ctrl+Z"},
    {19, edit, "&Redo", "Ctrl+Y"},
    {0, edit, "", ""},
    {20, edit, "D&escription", ""},
    {21, "&Edit|&View Columns", "Data &X", ""},
    {22, "&Edit|&View Columns", "Data &Y", ""},
    {23, "&Edit|&View Columns", "&Failures", ""},
    {24, "&Edit|&View Columns", "&Suspensions", ""},
    {25, "&Edit|&View Columns", "Failure &Mode", ""},
    {26, "&Edit|&View Columns", "&Comments", ""},
    {27, "&Edit|&View Columns", "(Close &View Menu)", ""},

    {28, options, "&Sample", ""},
    {29, options, "&Calculator", ""},
    {30, options, "&Precise Reading", ""},
    {31, options, "&Report", "Ctrl+R"},
    {32, options, "&Label/Style", ""},
    {33, options, "&Zoom", ""},

    {34, analysis, "&Distribution Analysis", ""},
    {49, analysis, "&3 Parameter", ""},
    {50, analysis, "&Weibayes", ""},

    {35, "&Tools", "&Fit Wizard", ""},

    {36, window, "&Cascade", ""},
    {37, window, "Tile &Horizontal", ""},
    {38, window, "Tile &Vertical", ""},
    {39, window, "Tile &Block", "Ctrl+B"},
    {40, window, "&Arrange Icons", ""},
    {41, window, "C&lose All", ""},
    {43, "&Window|&RestoreForm", "&Undelete", "Ctrl+U"},

    {44, help, "&Index", ""},
    {45, help, "&QuickHelp (1 page)", ""},
    {46, help, "&About", ""},
    {47, "&Help|&Other Tools", "QM &Weibull", ""},
    {48, "&Help|&Other Tools", "QM &Visual", ""},
});

}  // namespace

std::span<const MenuEntry> menu_entries() { return entries; }

}  // namespace tavlo
