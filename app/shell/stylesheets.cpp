// The two stylesheet texts with their colour tokens (@BG, @TEXT, …) still in
// place. fillTokens() in theme.cpp turns them into real stylesheets; keeping
// the texts apart makes them easy to read and compare as a whole.
#include "app/shell/stylesheets.h"

namespace app {

const char* appStyleTemplate() {
    return R"css(
QMainWindow, QWidget#central { background: @BG; }
QWidget { font-family: "Segoe UI", system-ui, sans-serif; font-size: 10.5pt; color: @TEXT; }
QFrame#card, QFrame.card { background: @PANEL; border: 1px solid @LINE; border-bottom: 2px solid @LINE; border-radius: 10px; }
QFrame#popover { background: @PANEL; border: 1px solid @LINE; border-radius: 10px; }
QPushButton#gear { font-size: 14pt; padding: 0; }
QFrame#header { background: @PANEL; border-bottom: 1px solid @LINE; }
QFrame#statusbar { background: @PANEL; border-top: 1px solid @LINE; }
QFrame#notice { background: @SOFT; border-bottom: 1px solid @LINE; }
QFrame#notice QLabel { color: @TEXT; }
QLabel#brand { font-size: 13pt; font-weight: 600; }
QLabel#mark { font-size: 8pt; color: @MUTED; }
QLabel.crumb { color: @MUTED; font-size: 9pt; }
QLabel.hint { color: @MUTED; font-size: 9.5pt; }
QLabel.sym { font-family: "Cambria", "Times New Roman", serif; font-style: italic; font-size: 13pt; }
QLabel.unit { color: @MUTED; }
QLabel.desc { color: @MUTED; font-size: 9pt; }
QLabel.interp { color: @ACCENT; }
QLabel.h2 { font-size: 17pt; font-weight: 600; }
QLabel.sh { font-size: 11pt; font-weight: 600; margin-top: 6px; }
QLineEdit, QComboBox, QTextEdit, QPlainTextEdit, QSpinBox { background: @INPUT; color: @TEXT; border: 1px solid @LINE; border-radius: 7px; padding: 5px 8px; font-size: 11pt; selection-background-color: @ACCENT; }
QLineEdit:hover, QComboBox:hover { border: 1px solid @MUTED; }
QLineEdit:focus, QComboBox:focus { border: 2px solid @ACCENT; }
QCheckBox:hover { color: @ACCENT; }
QLineEdit.err { border: 1px solid @BAD; }
QComboBox { min-width: 150px; }
QComboBox::drop-down { border: 0; width: 24px; subcontrol-origin: padding; subcontrol-position: center right; }
QComboBox::down-arrow { image: url(:/down.svg); width: 12px; height: 12px; }
QComboBox QAbstractItemView { background: @PANEL; color: @TEXT; selection-background-color: @SOFT; selection-color: @ACCENT; }
QPushButton { background: transparent; color: @TEXT; border: 1px solid @LINE; border-radius: 7px; padding: 6px 14px; font-size: 10.5pt; }
QPushButton:hover { background: @CHIP; border-color: @MUTED; }
QPushButton:pressed { background: @SOFT; border-color: @ACCENT; }
QPushButton:focus { border: 2px solid @ACCENT; padding: 5px 13px; }
QPushButton.primary:focus { border: 2px solid @TEXT; padding: 4px 12px; }
QCheckBox:focus { color: @ACCENT; }
QCheckBox::indicator { width: 16px; height: 16px; border: 1px solid @MUTED; border-radius: 4px; background: @INPUT; }
QCheckBox::indicator:hover { border-color: @ACCENT; }
QCheckBox::indicator:focus { border: 2px solid @ACCENT; width: 14px; height: 14px; }
QCheckBox::indicator:checked { background: @ACCENT; border-color: @ACCENT; image: url(@CHECKIMG); }
QCheckBox::indicator:indeterminate { background: @ACCENT; border-color: @ACCENT; image: url(@DASHIMG); }
QCheckBox::indicator:disabled { background: @CHIP; border-color: @LINE; }
QSlider:focus::handle:horizontal { border-color: @TEXT; }
QPushButton:disabled { color: @MUTED; }
QPushButton.primary { background: @ACCENT; color: @BTNTEXT; border: 0; font-weight: 600; }
QPushButton.primary:hover { background: @ACCENT; color: @BTNTEXT; border: 0; }
QPushButton.primary:pressed { background: @ACCENT; color: @BTNTEXT; border: 0; padding-top: 7px; padding-bottom: 5px; }
QPushButton.chip { background: @CHIP; border: 1px solid @LINE; border-radius: 12px; padding: 3px 10px; font-size: 9.5pt; }
QPushButton.chip:hover { border-color: @ACCENT; }
QPushButton.chip:pressed { background: @SOFT; padding-top: 4px; padding-bottom: 2px; }
QPushButton.ockey:pressed { background: @SOFT; border-color: @ACCENT; padding-top: 7px; padding-bottom: 5px; }
QPushButton.tile:pressed { background: @SOFT; }
QPushButton.chip[sel="true"] { background: @SOFT; border-color: @ACCENT; color: @ACCENT; }
QPushButton.tab[on="true"] { background: @SOFT; color: @ACCENT; border-color: @ACCENT; }
QPushButton.danger { color: @BAD; }
QPushButton.tile { background: @PANEL; border: 1px solid @LINE; border-radius: 12px; padding: 12px; text-align: left; }
QPushButton.tile:hover { border-color: @ACCENT; }
QPushButton.sw { border: 2px solid @LINE; border-radius: 6px; min-width: 26px; max-width: 26px; min-height: 26px; max-height: 26px; padding: 0; }
QPushButton.sw[on="true"] { border: 3px solid @ACCENT; }
QPushButton.ockey { background: @CHIP; border: 1px solid @LINE; border-radius: 7px; padding: 6px 4px; font-size: 11pt; min-width: 38px; min-height: 24px; }
QPushButton.ockey[op="true"] { color: @ACCENT; font-weight: 600; }
QPushButton.ockey[danger="true"] { color: @BAD; }
QPushButton.ockey:focus { border: 1px solid @LINE; padding: 6px 4px; }
QPushButton.ockey:hover { border-color: @ACCENT; }
QPushButton.linkbtn { border: 0; color: @ACCENT; text-decoration: underline; padding: 0; }
QTreeWidget { background: @PANEL; border: 0; border-right: 1px solid @LINE; font-size: 10.5pt; outline: 0; }
QTreeWidget::item { padding: 4px 6px; border-radius: 6px; }
QTreeWidget::item:hover { background: @CHIP; }
QTreeWidget::item:selected { background: @SOFT; color: @ACCENT; font-weight: 600; }
QTreeWidget::item:selected:hover { background: @SOFT; }
QTreeWidget::branch { background: @PANEL; }
QScrollArea { border: 0; background: transparent; }
QScrollArea > QWidget > QWidget { background: transparent; }
QTextBrowser { background: @PANEL; border: 0; }
QScrollBar:vertical { background: transparent; width: 14px; margin: 0; }
QScrollBar::handle:vertical { background: @LINE; border-radius: 5px; min-height: 36px; margin: 3px 4px; }
QScrollBar::handle:vertical:hover, QScrollBar::handle:vertical:pressed { background: @MUTED; margin: 3px 2px; }
QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }
QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: transparent; }
QScrollBar:horizontal { background: transparent; height: 14px; }
QScrollBar::handle:horizontal { background: @LINE; border-radius: 5px; min-width: 36px; margin: 4px 3px; }
QScrollBar::handle:horizontal:hover, QScrollBar::handle:horizontal:pressed { background: @MUTED; margin: 2px 3px; }
QScrollBar::add-line:horizontal, QScrollBar::sub-line:horizontal { width: 0; }
QScrollBar::add-page:horizontal, QScrollBar::sub-page:horizontal { background: transparent; }
QCheckBox { spacing: 6px; }
QSlider { background: transparent; min-height: 22px; }
QSlider::groove:horizontal { height: 6px; background: @CHIP; border: 1px solid @LINE; border-radius: 4px; margin: 0; }
QSlider::sub-page:horizontal { background: @ACCENT; border: 1px solid @ACCENT; border-radius: 4px; }
QSlider::add-page:horizontal { background: @CHIP; border: 1px solid @LINE; border-radius: 4px; }
QSlider::handle:horizontal { width: 18px; height: 18px; margin: -7px 0; background: @PANEL; border: 2px solid @ACCENT; border-radius: 10px; }
QSlider::handle:horizontal:hover { background: @ACCENT; }
QToolTip { background: @PANEL; color: @TEXT; border: 1px solid @LINE; }
QTableWidget { background: @PANEL; alternate-background-color: @CHIP; gridline-color: @LINE; border: 1px solid @LINE; border-radius: 6px; }
QHeaderView::section { background: @CHIP; color: @TEXT; border: 0; border-bottom: 1px solid @LINE; padding: 4px; }
QMenu { background: @PANEL; border: 1px solid @LINE; }
QMenu::item:selected { background: @SOFT; color: @ACCENT; }
QSplitter::handle { background: @LINE; width: 1px; }
QTabBar::tab { background: transparent; border: 1px solid @LINE; border-radius: 7px; padding: 5px 12px; margin-right: 6px; }
QTabBar::tab:selected { background: @SOFT; color: @ACCENT; border-color: @ACCENT; }
QProgressBar { background: @CHIP; border: 0; border-radius: 5px; height: 10px; text-align: center; }
QProgressBar::chunk { background: @ACCENT; border-radius: 5px; }
)css";
}

const char* documentStyleTemplate() {
    return R"css(
body { color: @TEXT; background-color: @PANEL; font-family: "Segoe UI", system-ui, sans-serif; font-size: 11pt; }
p { margin-top: 4px; margin-bottom: 6px; }
h2 { font-size: 17pt; font-weight: bold; margin-top: 4px; margin-bottom: 8px; }
h3 { font-size: 11.5pt; font-weight: bold; margin-top: 16px; margin-bottom: 4px; }
h4 { font-size: 10.5pt; font-weight: bold; margin-top: 10px; margin-bottom: 4px; }
.h4 { font-size: 10.5pt; font-weight: bold; margin-top: 12px; margin-bottom: 4px; }
.h2 { font-size: 17pt; font-weight: bold; margin-top: 4px; margin-bottom: 8px; }
.h3 { font-size: 11.5pt; font-weight: bold; margin-top: 16px; margin-bottom: 4px; }
.stnum { color: @ACCENT; background-color: @SOFT; font-weight: bold; font-size: 10pt; }
table.stept td.stbadge { padding-top: 10px; }
table.stept td.stbody { padding-top: 8px; padding-bottom: 6px; }
table.stept td.stline { background-color: @LINE; font-size: 1pt; }
.crumb { color: @MUTED; font-size: 9pt; }
.hint { color: @MUTED; font-size: 9.5pt; }
.hint0 { font-size: 10pt; margin-top: 2px; margin-bottom: 4px; }
.note { background-color: @SOFT; }
.v { font-style: italic; font-family: "Cambria", "Times New Roman", serif; }
.fn { font-style: normal; }
.eq { font-family: "Cambria Math", "Times New Roman", serif; font-size: 19pt; margin-top: 6px; margin-bottom: 8px; }
.fceq { font-size: 19pt; }
.known div { font-family: "Cambria Math", "Times New Roman", serif; font-size: 13pt; }
.known .crumb { font-family: "Segoe UI", sans-serif; }
table.eqs { font-family: "Cambria Math", "Times New Roman", serif; font-size: 13.5pt; margin-bottom: 8px; }
table.eqs td { font-family: "Cambria Math", "Times New Roman", serif; font-size: 13.5pt; padding-top: 2px; padding-bottom: 2px; }
table.eqs td.l { text-align: right; padding-right: 4px; }
table.eqs td.m { padding-left: 2px; padding-right: 2px; }
table.eqs td.r { padding-left: 2px; }
table.eqs td.n { color: @MUTED; font-family: "Segoe UI", sans-serif; font-size: 9.5pt; padding-left: 12px; }
.ok { color: @OK; }
.bad { color: @BAD; }
.msg { background-color: @CHIP; }
.msg.bad { color: @BAD; }
.ok-box { color: @OK; background-color: @SOFT; }
.facit { background-color: @SOFT; font-size: 12pt; margin-top: 4px; margin-bottom: 10px; }
.facit .k { color: @MUTED; font-size: 8.5pt; font-weight: bold; }
.big { color: @ACCENT; font-family: "Cambria Math", "Times New Roman", serif; font-size: 19pt; font-weight: bold; }
.big2 { color: @ACCENT; font-family: "Cambria Math", "Times New Roman", serif; font-size: 13pt; font-weight: bold; }
.ipbig { font-size: 24pt; font-weight: bold; }
.hl { color: @ACCENT; font-weight: bold; }
table { font-size: 10pt; }
table.data th { text-align: right; font-weight: bold; border-bottom: 1px solid @LINE; padding: 6px 9px; }
table.data td { text-align: right; padding: 6px 9px; border-bottom: 1px solid @LINE; }
td.calc { color: @ACCENT; font-weight: bold; }
tr.calc td { color: @ACCENT; font-weight: bold; }
td.mut { color: @MUTED; }
table.kvgrid td { background-color: @CHIP; padding: 6px 10px; border: 0; text-align: left; }
table.kvgrid td.kvempty { background-color: @PANEL; }
table.kvgrid .k { color: @MUTED; font-size: 8.5pt; }
table.kvgrid .val { font-family: "Cambria Math", "Times New Roman", serif; font-size: 13pt; }
table.kvgrid .val.hl { color: @ACCENT; font-weight: bold; }
table.fcout td { border: 0; text-align: left; vertical-align: middle; }
.figcap { color: @MUTED; font-size: 9pt; text-align: center; margin-top: 0; margin-bottom: 10px; }
.fig { text-align: center; margin-top: 10px; margin-bottom: 2px; }
.center { text-align: center; }
.right { text-align: right; }
.sheet-head .crumb { color: @MUTED; }
.glsymb { color: @ACCENT; font-family: "Cambria", serif; font-style: italic; }
.glf { font-family: "Cambria Math", serif; font-size: 12pt; background-color: @CHIP; }
.mfforms { color: @MUTED; font-family: "Cambria Math", serif; font-size: 12pt; }
.mftitle { font-weight: bold; }
.fcq { font-size: 16pt; font-weight: bold; }
.fcback { margin-top: 10px; }
.chip { color: @ACCENT; }
.hchip { color: @TEXT; background-color: @CHIP; font-weight: bold; font-size: 10pt; text-decoration: none; }
.hchip .crumb { color: @MUTED; font-weight: normal; }
.chips { line-height: 190%; }
.chip.big { color: @ACCENT; background-color: @CHIP; font-family: "Segoe UI", sans-serif; font-size: 10.5pt; font-weight: bold; }
.wsans { margin-top: 8px; }
.wsbox { background-color: @CHIP; }
.lvl.svag { color: @BAD; } .lvl.mid { color: #a86f00; } .lvl.god { color: @OK; } .lvl.ny { color: @MUTED; }
.txstory { font-size: 12pt; background-color: @CHIP; }
a { color: @ACCENT; text-decoration: none; }
sub { font-size: 80%; }
)css";
}

}  // namespace app
