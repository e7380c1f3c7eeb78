#pragma once
// The kivfunc utilities that work on the suite's forms: their face and their place on the screen.
class QWidget;

namespace kivdb::kivfunc {

// Fits a form to the screen: gives it the suite's standard face, 宋体 9 pt (or an installed
// Song/Ming face when that one is missing), and shrinks it to the screen's work area when it
// was designed larger. Qt already scales for the screen's DPI. A null form is ignored.
void SetSysScreen(QWidget* form);
// Centres a form over its parent window, or over its screen's work area when it has none,
// keeping its top-left corner on that screen. A null form is ignored.
void SetFormPOsition(QWidget* form);

}  // namespace kivdb::kivfunc
