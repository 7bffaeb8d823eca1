// The run-time errors of the jukebox and the two borders that stop them.
#pragma once

#include <QString>

#include <cstdint>
#include <exception>
#include <utility>

// The customary numbers of run-time errors.
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

// The customary text of an error number, for instance "Overflow" for 6. An unknown number reads
// "Application-defined or object-defined error".
QString RunTimeErrorText(int number);

// A run-time error: it ends the running handler, see RunHandler. `detail` tells a person where it came from:
// file, section, key, byte, value.
class RunTimeError : public std::exception {
public:
    RunTimeError(int errorNumber, QString errorDetail)
        : number(errorNumber), detail(std::move(errorDetail)) {}
    const char* what() const noexcept override { return "run-time error"; }

    int number;
    QString detail;
};

// Raises an error for a value that is not between two bounds, which the detail names.
[[noreturn]] void RaiseOutside(ErrorNumber number, std::int64_t value, std::int64_t lowest,
                               std::int64_t highest);

// Any exception as a run-time error: a RunTimeError is itself, exhausted memory is 7, all others are 51 with
// the exception's own words as detail.
RunTimeError RunTimeErrorOf(const std::exception& exception);

// A run-time error in a routine whose faults end the program. It passes every handler border.
class ProgramStop : public std::exception {
public:
    ProgramStop(RunTimeError cause, QString name) : error(std::move(cause)), routine(std::move(name)) {}
    const char* what() const noexcept override { return "program stop"; }

    RunTimeError error;
    QString routine;
};

// The regular end of the program, thrown by the exit routine. It passes both borders.
class ProgramEnd : public std::exception {
public:
    explicit ProgramEnd(int code) : exitCode(code) {}
    const char* what() const noexcept override { return "program end"; }

    int exitCode;
};

// Runs the body of a routine whose faults end the program: a run-time error in it goes up as a ProgramStop
// that bears the routine's name.
template <typename Body>
void EndsProgram(const char* routine, Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const RunTimeError& error) {
        throw ProgramStop(error, QString::fromLatin1(routine));
    }
}

// Runs one statement after which the next one goes on whatever happens: a run-time error in it is dropped.
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
