// The run-time errors of the jukebox and the two exceptions that end the program.
#pragma once

#include <QString>

#include <cstdint>
#include <exception>
#include <utility>

// The customary error numbers.
enum ErrorNumber : int {
    kInvalidProcedureCall = 5,
    kOverflow = 6,
    kOutOfMemory = 7,
    kSubscriptOutOfRange = 9,
    kDivisionByZero = 11,
    kTypeMismatch = 13,
    kInternalError = 51,
    kFileNotFound = 53,
    kInputPastEnd = 62,
    kPathFileAccess = 75,
    kPathNotFound = 76,
    kObjectNotSet = 91,
    kInvalidPortNumber = 8002,
    kPortAlreadyOpen = 8005,
    kPortNotOpen = 8018,
};

// Returns the customary text of an error number, for instance "Overflow" for 6. For an unknown number it
// returns "Application-defined or object-defined error".
QString RunTimeErrorText(int number);

// A run-time error. It ends the running handler, see RunHandler. `detail` says where it came from: file,
// section, key, byte, value.
class RunTimeError : public std::exception {
public:
    RunTimeError(int errorNumber, QString errorDetail)
        : number(errorNumber), detail(std::move(errorDetail)) {}
    const char* what() const noexcept override { return "run-time error"; }

    int number;
    QString detail;
};

// Raises an error for a value that is not between two bounds. The detail names the value and the bounds.
[[noreturn]] void RaiseOutside(ErrorNumber number, std::int64_t value, std::int64_t lowest,
                               std::int64_t highest);

// Converts any exception to a run-time error: a RunTimeError stays as it is, exhausted memory becomes 7,
// anything else becomes 51 with the exception's text as detail.
RunTimeError RunTimeErrorOf(const std::exception& exception);

// Returns number, text and detail of an error, for instance "13 (Type mismatch): config.ini ...".
QString WordsOf(const RunTimeError& error);

// A run-time error in a routine whose errors end the program. RunHandler does not catch it.
class ProgramStop : public std::exception {
public:
    ProgramStop(RunTimeError cause, QString name) : error(std::move(cause)), routine(std::move(name)) {}
    const char* what() const noexcept override { return "program stop"; }

    RunTimeError error;
    QString routine;
};

// The regular end of the program, thrown by the exit routine. Neither RunHandler nor EndsProgram catches it.
class ProgramEnd : public std::exception {
public:
    explicit ProgramEnd(int code) : exitCode(code) {}
    const char* what() const noexcept override { return "program end"; }

    int exitCode;
};

// Runs the body of a routine whose errors end the program: a run-time error in it is rethrown as a
// ProgramStop with the routine's name.
template <typename Body>
void EndsProgram(const char* routine, Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const RunTimeError& error) {
        throw ProgramStop(error, QString::fromLatin1(routine));
    }
}

// Runs one statement and ignores a run-time error in it, so that the next statement always runs.
template <typename Statement>
void PassOver(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
    } catch (const RunTimeError&) {
    }
}

// Runs a body and returns its result. Prefixes the detail of a run-time error in it with `where`: file,
// section, key, and what is expected there.
template <typename Where, typename Body>
decltype(auto) TellingWhere(const Where& where, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.number, where() + QStringLiteral(": ") + error.detail);
    }
}
