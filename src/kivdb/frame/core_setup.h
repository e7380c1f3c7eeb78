#pragma once
// What every process using the library sets up once, widgets aside: a program that never
// shows a dialog (the command line tool) sets up only this and loads no GUI library.
namespace kivdb {

// The local time zone read once (pinLocalTimeZone) and the embedded database's stored
// procedures. Safe to call from any thread, any number of times.
void setUpCore();

}  // namespace kivdb
