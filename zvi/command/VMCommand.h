#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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
    /// The integer 0, at the end of a chain.
    VMArguement() = default;
    /// Frees the text of a kArgString.
    virtual ~VMArguement();
    VMArguement(VMArguement const &) = delete;
    VMArguement &operator=(VMArguement const &) = delete;

    /// Whether it is an integer or a double.
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
///
/// Values that a range or a repeat names are kept as one run until somebody asks for the chain with `GetFirst`: a list
/// of ten million numbers takes no memory here, and `CopyIntegers` and `CopyDoubles` write it straight where it goes.
class ZVI_API VMCommand {
public:
    /// Without arguments; operation code and computed flag are 0.
    VMCommand() = default;
    /// Destroys the chain with its texts.
    ~VMCommand() { Clear(); }
    VMCommand(VMCommand const &) = delete;
    VMCommand &operator=(VMCommand const &) = delete;

    /// Puts an argument of kind kArgInteger behind the others.
    void AddInteger(std::int32_t value) { AddIntegers(value, 0, 1); }
    /// The same of kind kArgDouble.
    void AddDouble(double value) { AddDoubles(value, 0.0, 1); }
    /// The same of kind kArgString, with a copy of the text.
    void AddString(std::string_view text);
    /// The same of kind kArgPosition.
    void AddPosition(double x, double y, double z);
    /// Puts `count` integers behind the others: `first`, then each `step` more, with the wrap-around of 32 bits.
    /// Nothing for a count below 1, here and in the next one.
    void AddIntegers(std::int32_t first, std::int32_t step, std::int32_t count);
    /// The same for doubles: `first`, then i * `step` + `first` for i from 1; all of them `first` for a step of 0.
    void AddDoubles(double first, double step, std::int32_t count);

    /// Clears this command, then copies the chain of `other` with its texts. Operation code and computed flag stay as
    /// `Clear` leaves them: the flag of `other` is deliberately not carried across.
    void AppendCopy(VMCommand const &other);
    /// Moves the chain of `other` behind this one and leaves `other` cleared. The computed flag is not carried across.
    /// A command that is to take from itself stays as it is.
    void TakeFrom(VMCommand &other);
    /// Destroys the chain and zeroes operation code and count. The computed flag stays as it is.
    void Clear() {
        if (m_count != 0)
            DestroyArguments();
        m_opCode = 0;
        m_current = nullptr;
    }

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

    /// The first argument, which becomes the current one; null for an empty command. From here on the chain takes 64
    /// bytes for each argument.
    VMArguement *GetFirst();
    /// The argument after the current one, which becomes the current one; null at the end and before `GetFirst`.
    VMArguement *GetNext();

    /// Whether every argument is an integer; so it is in an empty command.
    bool HoldsIntegers() const;
    /// The same for an integer or a double.
    bool HoldsNumbers() const;
    /// The same for a position.
    bool HoldsPositions() const;
    /// The low 32 bits of the value of each integer and double, 0 for another argument; `out` has room for `GetCount`.
    void CopyIntegers(std::int32_t *out) const;
    /// Each integer and double as a double, 0 for another argument; `out` has room for `GetCount`.
    void CopyDoubles(double *out) const;
    /// x, y and z of each position in a row, zeros for another argument; `out` has room for three times `GetCount`.
    void CopyPositions(double *out) const;

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
    /// repeated, which existing logs rely on. The bytes of a text are read as UTF-8.
    CString const &MakeText();
    /// The same as narrow text, which lives until the next call or the end of this command; the texts in it are byte
    /// for byte those that `AddString` was given.
    char const *GetCommandString();

private:
    struct IntegerRun {
        std::int32_t first;
        std::int32_t step;
    };
    struct DoubleRun {
        double first;
        double step;
    };
    struct Repeat {
        double real;
        std::int32_t count;
    };
    struct Position {
        double x;
        double y;
        double z;
    };
    /// Arguments of one kind in a row; only numbers come more than one at a time.
    struct Run {
        std::int32_t kind;
        std::int32_t count;
        union {
            IntegerRun integers;
            DoubleRun doubles;
            char *text; ///< owned by the command
            Repeat repeat;
            Position position;
        };

        std::int32_t IntegerAt(std::int32_t index) const;
        double DoubleAt(std::int32_t index) const;
        double AsDouble(std::int32_t index) const;
        void Fill(VMArguement &argument, std::int32_t index) const;
        bool Form(std::int32_t index, std::string &piece) const;
    };
    /// Runs of a short line live in the command itself.
    static constexpr std::size_t kRunsInPlace = 4;

    /// The argument as a run of one.
    static Run RunOf(VMArguement const &argument);
    template <class Take>
    void ForEachRun(Take take) const;
    template <class IsWanted>
    bool HoldsOnly(IsWanted isWanted) const;
    template <class Set>
    void Add(std::int32_t kind, std::int32_t count, Set set);
    void AddRun(Run const &run);
    void AppendToChain(Run const &run);
    void ReserveRuns(std::size_t more);
    void DestroyArguments();
    void MakeChain();
    void FillFrom(VMCommand const &other, VMArguement *first);
    static std::unique_ptr<VMArguement[]> NewBlock(std::int32_t count);
    VMArguement *AddBlock(std::int32_t count);
    void Disown();
    int ReadUpTo(std::int32_t most, double *values) const;

    CString m_text;
    std::uint32_t m_opCode = 0;
    std::int32_t m_count = 0;
    VMArguement *m_first = nullptr; ///< null while the arguments are kept as runs
    VMArguement *m_last = nullptr;
    VMArguement *m_current = nullptr;
    std::int32_t m_computed = 0;
    std::string m_narrowText;
    std::size_t m_runCount = 0;
    std::size_t m_runRoom = kRunsInPlace;
    Run *m_runs = m_firstRuns;
    std::unique_ptr<Run[]> m_moreRuns; ///< all runs, once they do not fit the first ones
    Run m_firstRuns[kRunsInPlace];
    std::optional<VMArguement> m_only;                        ///< the chain, when it was made of a single argument
    std::unique_ptr<VMArguement[]> m_block;                   ///< the chain, when it was made of more
    std::vector<std::unique_ptr<VMArguement[]>> m_moreBlocks; ///< what was put behind it later
};

} // namespace zvi::lib
