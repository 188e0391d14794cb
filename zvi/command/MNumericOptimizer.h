#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MTArray.h"

#include <cstdint>

namespace zvi::lib {

/// One run of a number list: `first`, `first + step`, ..., `last`. A single number is a run of step 1.
struct STB_OPT_NODE {
    std::int32_t first; ///< the number it begins with
    std::int32_t last;  ///< the number it ends with, itself a part of it
    std::int32_t step;  ///< from one number to the next; 0 for a run of equal numbers
};

/// Node and element numbers as compact text, such as "1to9by2 20", and the way back.
///
/// A run is a maximal stretch of equal steps from the number where it begins. It counts when its step is 1 and it holds
/// at least 3 numbers, or when it holds at least 4 numbers of any other step: 1 2 3 is a run, 1 3 5 is not, 1 3 5 7 is.
///
/// Text made here names exactly the numbers it was made from: `SelectNumByStr` over a list that holds them gives them
/// back. Numbers are 32-bit; a larger one joins no run and stands alone in the text.
///
///     MNumericOptimizer optimizer;
///     MArray<long> numbers{1, 3, 5, 7, 20};
///     optimizer.OptimizeSortedArray(numbers); // "1to7by2 20"
class ZVI_API MNumericOptimizer {
public:
    /// Kinds of token that `GetToken` finds.
    enum TokenType : std::uint64_t {
        kNoToken = 0, ///< what no list holds
        kNumber = 1,  ///< digits, with a sign in front or without
        kBlank = 2,   ///< a blank, a tab, a carriage return, or the end of the text
        kTo = 3,      ///< T or TO
        kBy = 4       ///< B or BY
    };

    /// Virtual: a class of an application may derive from it.
    virtual ~MNumericOptimizer();

    /// The compact text of an ascending list; empty for an empty list. Equal numbers are kept as they stand: four of
    /// them are a run of step 0, written "5to5". A list that is not ascending is read through a sorted copy.
    CString OptimizeSortedArray(MArray<long> &numbers);
    /// Sorts `numbers` ascending in place, then the same; a number that occurs several times appears once.
    CString OptimizeUnsortedArray(MArray<long> &numbers);

    /// The same as records: the runs in the order in which they are found, then every number left over as a record of
    /// its own. An empty list leaves `result` empty. Runs are taken in the order of the list, so a descending stretch
    /// gives a negative step. Returns 1.
    int OptimizeSortedArray(MArray<long> &numbers, MArray<STB_OPT_NODE> &result);
    /// The same after `numbers` was sorted in place, each number once.
    int OptimizeUnsortedArray(MArray<long> &numbers, MArray<STB_OPT_NODE> &result);

    /// The text of `OptimizeSortedArray`, from an array or from a pointer and a count; the input is not changed.
    CString Optimize(MArray<long> &numbers);
    /// The same for `count` numbers from a pointer on.
    CString Optimize(long *numbers, std::int64_t count);

    /// The numbers of an ascending list that `text` names, ascending, each once. `result` is emptied first.
    /// Numbers that are not in the list are passed over. Returns 1, or 0 for a text that cannot be read; an empty list
    /// returns 1 at once.
    int SelectNumByStr(MTArray<long> &numbers, wchar_t const *text, MArray<long> &result);
    /// The same for an array that owns its numbers.
    int SelectNumByStr(MArray<long> &numbers, wchar_t const *text, MArray<long> &result);
    /// The same for `count` numbers from a pointer on.
    int SelectNumByStr(long *numbers, std::int64_t count, wchar_t const *text, MArray<long> &result);

    /// The same in the order of the text: a range from high to low gives its numbers from high to low. With `unique`
    /// non-zero a repeated number keeps its last place alone.
    int SelectNumByStrKeepSeq(MTArray<long> &numbers, wchar_t const *text, MArray<long> &result, int unique);
    /// The same for an array that owns its numbers.
    int SelectNumByStrKeepSeq(MArray<long> &numbers, wchar_t const *text, MArray<long> &result, int unique);
    /// The same for `count` numbers from a pointer on.
    int SelectNumByStrKeepSeq(long *numbers, std::int64_t count, wchar_t const *text, MArray<long> &result, int unique);

    /// Copies a selection text with one blank between its words and none inside them: "1 to 9  by 2 20" becomes
    /// "1to9by2 20". `dst` needs room for as many characters as `src` has, and the closing zero. Returns 0, with an
    /// empty `dst`, for a text that is not a sequence of numbers and ranges "FIRSTtoLAST" or "FIRSTtoLASTbySTEP".
    int StrCpyRemoveSpace(wchar_t *dst, wchar_t const *src);

    /// The token at `pos`: returns 1 and moves `pos` past it, or returns 0 with `type` kNoToken and `pos` as it was.
    /// A number may have a sign, with blanks after it, and at most 127 characters without the blanks; `value` holds it
    /// in two's complement.
    /// The end of the text is a blank that `pos` does not pass.
    int GetToken(wchar_t const *text, std::uint64_t &pos, std::uint64_t &type, std::uint64_t &value);

protected:
    /// Finds the first run at or after `pos`: numbers before it go to `m_rest`, the run to `m_runs`, and `pos` moves
    /// behind it. Returns 0 when no run is left, with everything in `m_rest`.
    int ExtractSeq(MTArray<long> const &numbers, std::int64_t &pos);
    /// The runs, sorted by first value, merged with the left-over numbers in ascending order.
    CString MakeOptimizedStr();
    /// The numbers that the words of `text` name, in the order of the text.
    int SelectNumByStrBase(MTArray<long> &numbers, wchar_t const *text, MArray<long> &result);

    MArray<STB_OPT_NODE> m_runs; ///< the runs found so far
    MArray<long> m_rest;         ///< the numbers in no run, in the order of the list

private:
    void ExtractAll(MTArray<long> const &numbers);
    CString TextOf(MTArray<long> const &ascending);
};

} // namespace zvi::lib
