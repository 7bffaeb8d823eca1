// The texts of the run-time errors.
#include "core/run_time_error.h"

#include <new>

namespace {

struct ErrorText {
    int number;
    const char* text;
};

// clang-format off
constexpr ErrorText kErrorTexts[] = {
    {kInvalidProcedureCall, "Invalid procedure call or argument"},
    {kOverflow,             "Overflow"},
    {kOutOfMemory,          "Out of memory"},
    {kSubscriptOutOfRange,  "Subscript out of range"},
    {kDivisionByZero,       "Division by zero"},
    {kTypeMismatch,         "Type mismatch"},
    {kInternalError,        "Internal error"},
    {kFileNotFound,         "File not found"},
    {kInputPastEnd,         "Input past end of file"},
    {kPathFileAccess,       "Path/File access error"},
    {kPathNotFound,         "Path not found"},
    {kObjectNotSet,         "Object variable not set"},
    {kInvalidPortNumber,    "Invalid port number"},
    {kPortAlreadyOpen,      "Port already open"},
    {kPortNotOpen,          "Operation valid only when the port is open"},
};
// clang-format on

} // namespace

QString RunTimeErrorText(int number) {
    for (const ErrorText& row : kErrorTexts) {
        if (row.number == number) {
            return QString::fromLatin1(row.text);
        }
    }
    return QStringLiteral("Application-defined or object-defined error");
}

void RaiseOutside(ErrorNumber number, std::int64_t value, std::int64_t lowest, std::int64_t highest) {
    throw RunTimeError(number, QStringLiteral("%1 is not between %2 and %3")
                                   .arg(static_cast<qlonglong>(value))
                                   .arg(static_cast<qlonglong>(lowest))
                                   .arg(static_cast<qlonglong>(highest)));
}

RunTimeError RunTimeErrorOf(const std::exception& exception) {
    if (const auto* error = dynamic_cast<const RunTimeError*>(&exception)) {
        return *error;
    }
    if (dynamic_cast<const std::bad_alloc*>(&exception) != nullptr) {
        return {kOutOfMemory, QString()};
    }
    return {kInternalError, QString::fromLocal8Bit(exception.what())};
}

QString WordsOf(const RunTimeError& error) {
    const QString words = QStringLiteral("%1 (%2)").arg(error.number).arg(RunTimeErrorText(error.number));
    return error.detail.isEmpty() ? words : words + QStringLiteral(": ") + error.detail;
}
