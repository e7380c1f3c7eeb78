#pragma once
// What a process using the whole library sets up once before its first call: the core
// (frame/core_setup.h) and message boxes as the messages' sink whenever a QApplication
// exists. The C interface and the command line tool do it themselves.
namespace kivdb {

// Safe to call from any thread, any number of times.
void setUpLibrary();

}  // namespace kivdb
