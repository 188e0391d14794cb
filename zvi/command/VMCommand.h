#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zvi::lib {

/// What an argument of a command is. The parser makes the first three and positions.
enum ArguementKind : std::int32_t {
    kArgInteger = 1,  ///< `integer`
    kArgDouble = 2,   ///< `real`
    kArgString = 6,   ///< `text`, owned
    kArgRepeat = 7,   ///< `real`, repeated `count` times
    kArgPosition = 8, ///< `x`, `y`, `z`
    kArgError = 100   ///< what could not be read
};

/// One argument of a command, chained to the next. It owns its text.
class ZVI_API VMArguement {
public:
    VMArguement() = default;
    virtual ~VMArguement();
    VMArguement(VMArguement const &) = delete;
    VMArguement &operator=(VMArguement const &) = delete;

    bool IsNumber() const { return kind == kArgInteger || kind == kArgDouble; }
    /// An integer or a double as a double; 0 for every other kind.
    double AsDouble() const { return kind == kArgInteger ? integer : kind == kArgDouble ? real : 0.0; }

    std::int32_t kind = kArgInteger; ///< one of ArguementKind
    /// The member that `kind` names: `integer`, `real` (also the repeated value of a repeat) or `text`.
    union {
        std::uint64_t bits = 0;
        std::int32_t integer;
        double real;
        char *text;
    };
    std::int32_t count = 0;      ///< of a repeat
    double x = 0.0;              ///< of a position
    double y = 0.0;              ///< of a position
    double z = 0.0;              ///< of a position
    VMArguement *next = nullptr; ///< null for the last one
};

/// What a parse leaves behind: an operation code and a chain of typed arguments, which it owns.
class ZVI_API VMCommand {
public:
    VMCommand() = default;
    ~VMCommand();
    VMCommand(VMCommand const &) = delete;
    VMCommand &operator=(VMCommand const &) = delete;

    /// Puts an argument of kind kArgInteger behind the others.
    void AddInteger(std::int32_t value);
    /// The same of kind kArgDouble.
    void AddDouble(double value);
    /// The same of kind kArgString, with a copy of the text.
    void AddString(std::string_view text);
    /// The same of kind kArgPosition.
    void AddPosition(double x, double y, double z);

    /// Clears this command, then copies the chain of `other` with its texts. Operation code and computed flag stay as
    /// `Clear` leaves them: the flag of `other` is deliberately not carried across.
    void AppendCopy(VMCommand const &other);
    /// Moves the chain of `other` behind this one and leaves `other` cleared. The computed flag is not carried across.
    /// A command that is to take from itself stays as it is.
    void TakeFrom(VMCommand &other);
    /// Destroys the chain and zeroes operation code and count. The computed flag stays as it is.
    void Clear();

    /// The operation code, 0 until one was set.
    std::uint32_t GetOpCode() const { return m_opCode; }
    /// Sets it.
    void SetOpCode(std::uint32_t opCode) { m_opCode = opCode; }
    /// How many arguments there are.
    std::int32_t GetCount() const { return m_count; }
    /// Not 0 once an argument was put in that an operator, a parenthesis or a function gave.
    std::int32_t IsComputed() const { return m_computed; }
    /// Sets that flag.
    void SetComputed(std::int32_t computed) { m_computed = computed; }

    /// The first argument, which becomes the current one; null for an empty command.
    VMArguement *GetFirst();
    /// The argument after the current one, which becomes the current one; null at the end and before `GetFirst`.
    VMArguement *GetNext();
    /// The first argument, the current one left alone; null for an empty command.
    VMArguement const *First() const { return m_first; }

    /// Up to three numbers, a missing one 0.0. Returns 0, and writes nothing, when there are more arguments or one that
    /// is no number.
    int ReadNumbers(double &x, double &y, double &z) const;
    /// The same for up to two numbers.
    int ReadNumbers(double &x, double &y) const;
    /// The one number; 0 also for an empty command.
    int ReadNumber(double &value) const;
    /// The low 32 bits of the value of the one argument.
    int ReadInteger(std::int32_t &value) const;

    /// The arguments as text, "1,2.000000,NAME". A position has no text form: the text of the argument before it is
    /// repeated, which existing logs rely on.
    CString const &MakeText();
    /// The same as narrow text, which lives until the next call or the end of this command.
    char const *GetCommandString();

private:
    VMArguement &Append(ArguementKind kind);
    int ReadUpTo(std::int32_t most, double *values) const;

    CString m_text;
    std::uint32_t m_opCode = 0;
    std::int32_t m_count = 0;
    VMArguement *m_first = nullptr;
    VMArguement *m_last = nullptr;
    VMArguement *m_current = nullptr;
    std::int32_t m_computed = 0;
    std::string m_narrowText;
};

} // namespace zvi::lib
