#pragma once
// The one error hierarchy of the library: every error it raises is a kivdb::Error, whose
// kind says what went wrong independently of the class a layer raises. The kind crosses the
// C interface (kivdb_last_error_kind), so a host can tell a statement it should fix from a
// database that is gone without reading the message.
#include <stdexcept>
#include <string>

namespace kivdb {

// The values are the C interface's KIVDB_ERROR_* numbers: never renumbered.
enum class ErrorKind {
    Sql = 1,       // a statement the server would reject, or one the dialect cannot run
    Database = 2,  // the engine, the driver or the connection failed
    Value = 3,     // a value that is not of the type asked for
    Date = 4,      // a text or number that is not a date
    Schema = 5,    // the schema scripts could not be read or run
    Argument = 6,  // bad input from the caller: a null, invalid or closed handle, text not in
                   // the host's encoding, an option the library does not know
};

class Error : public std::runtime_error {
public:
    Error(const std::string& message, ErrorKind kind) : std::runtime_error(message), kind_(kind) {}
    ErrorKind kind() const { return kind_; }

private:
    ErrorKind kind_;
};

}  // namespace kivdb
