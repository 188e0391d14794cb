#include "zvi/command/VMCommand.h"

#include "zvi/core/Utf8.h"
#include "zvi/core/WideFormat.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <memory>
#include <utility>

namespace zvi::lib {

VMArguement::~VMArguement() {
    if (kind == kArgString)
        delete[] text;
}

std::int32_t VMCommand::Run::IntegerAt(std::int32_t index) const {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(integers.first) +
                                     static_cast<std::uint32_t>(index) * static_cast<std::uint32_t>(integers.step));
}

double VMCommand::Run::DoubleAt(std::int32_t index) const {
    return index == 0 || doubles.step == 0.0 ? doubles.first : index * doubles.step + doubles.first;
}

double VMCommand::Run::AsDouble(std::int32_t index) const {
    return kind == kArgInteger ? IntegerAt(index) : kind == kArgDouble ? DoubleAt(index) : 0.0;
}

void VMCommand::Run::Fill(VMArguement &argument, std::int32_t index) const {
    argument.kind = kind;
    switch (kind) {
    case kArgInteger:
        argument.integer = IntegerAt(index);
        break;
    case kArgDouble:
        argument.real = DoubleAt(index);
        break;
    case kArgString:
        argument.text = text;
        break;
    case kArgRepeat:
        argument.real = repeat.real;
        argument.count = repeat.count;
        break;
    case kArgPosition:
        argument.x = position.x;
        argument.y = position.y;
        argument.z = position.z;
        break;
    default:
        break;
    }
}

VMCommand::Run VMCommand::RunOf(VMArguement const &argument) {
    Run run;
    run.kind = argument.kind;
    run.count = 1;
    run.position = {argument.x, argument.y, argument.z};
    if (argument.kind == kArgInteger)
        run.integers = {argument.integer, 0};
    else if (argument.kind == kArgDouble)
        run.doubles = {argument.real, 0.0};
    else if (argument.kind == kArgString)
        run.text = argument.text;
    else if (argument.kind == kArgRepeat)
        run.repeat = {argument.real, argument.count};
    return run;
}

/// The arguments, whether they are kept as runs or as a chain.
template <class Take>
void VMCommand::ForEachRun(Take take) const {
    for (VMArguement const *argument = m_first; argument; argument = argument->next)
        take(RunOf(*argument));
    for (Run const *run = m_runs; run != m_runs + m_runCount; ++run)
        take(*run);
}

/// Room for further runs, so that adding them cannot fail.
void VMCommand::ReserveRuns(std::size_t more) {
    std::size_t const needed = m_runCount + more;
    if (needed <= m_runRoom)
        return;
    // Twice the room at least, so that many small additions do not copy all runs each time.
    std::size_t const room = std::max(needed, 2 * m_runRoom);
    auto runs = std::make_unique_for_overwrite<Run[]>(room);
    std::copy_n(m_runs, m_runCount, runs.get());
    m_moreRuns = std::move(runs);
    m_runs = m_moreRuns.get();
    m_runRoom = room;
}

/// Puts a run, whose value `set` fills in, behind the others.
template <class Set>
void VMCommand::Add(std::int32_t kind, std::int32_t count, Set set) {
    if (count <= 0)
        return;
    if (m_first) {
        Run run{kind, count, {}};
        set(run);
        AppendToChain(run);
    } else {
        ReserveRuns(1);
        Run &run = m_runs[m_runCount++];
        run.kind = kind;
        run.count = count;
        set(run);
    }
    m_count += count;
}

/// A single number, which most runs are, without a copy of all bytes, which would have to wait until they are stored.
void VMCommand::AddRun(Run const &run) {
    if (run.count == 1 && run.kind == kArgInteger)
        AddInteger(run.integers.first);
    else if (run.count == 1 && run.kind == kArgDouble)
        AddDouble(run.doubles.first);
    else
        Add(run.kind, run.count, [&run](Run &added) { added = run; });
}

/// Arguments in a row, one at least, each the integer 0.
std::unique_ptr<VMArguement[]> VMCommand::NewBlock(std::int32_t count) {
    assert(count > 0);
    auto const size = static_cast<std::size_t>(count);
    auto block = std::make_unique<VMArguement[]>(size);
    for (std::size_t i = 1; i < size; ++i)
        block[i - 1].next = &block[i];
    return block;
}

/// The same, kept beside the blocks there are.
VMArguement *VMCommand::AddBlock(std::int32_t count) {
    m_moreBlocks.push_back(NewBlock(count));
    return m_moreBlocks.back().get();
}

/// Puts what a run stands for behind the last argument of a chain that is there.
void VMCommand::AppendToChain(Run const &run) {
    assert(m_last);
    m_last->next = AddBlock(run.count);
    for (std::int32_t i = 0; i < run.count; ++i) {
        m_last = m_last->next;
        run.Fill(*m_last, i);
    }
}

/// Links blank arguments, from `first` on, to the chain and makes them those of `other`, texts included.
void VMCommand::FillFrom(VMCommand const &other, VMArguement *first) {
    VMArguement *next = first;
    VMArguement *last = m_last;
    other.ForEachRun([&](Run const &run) {
        for (std::int32_t i = 0; i < run.count; ++i) {
            last = std::exchange(next, next->next);
            run.Fill(*last, i);
        }
    });
    (m_last ? m_last->next : m_first) = first;
    m_last = last;
}

/// Leaves the texts to another owner, and is empty but for what is left of a chain.
void VMCommand::Disown() {
    m_runCount = 0;
    for (VMArguement *argument = m_first; argument; argument = argument->next)
        argument->kind = kArgInteger;
}

/// From here on the arguments are a chain. When memory cannot be had, they stay runs.
void VMCommand::MakeChain() {
    if (m_first || m_count == 0)
        return;
    if (m_count > 1)
        m_block = NewBlock(m_count);
    FillFrom(*this, m_count > 1 ? m_block.get() : &m_only.emplace());
    m_runCount = 0;
}

void VMCommand::AddIntegers(std::int32_t first, std::int32_t step, std::int32_t count) {
    Add(kArgInteger, count, [=](Run &run) { run.integers = {first, step}; });
}

void VMCommand::AddDoubles(double first, double step, std::int32_t count) {
    Add(kArgDouble, count, [=](Run &run) { run.doubles = {first, step}; });
}

void VMCommand::AddString(std::string_view text) {
    auto copy = std::make_unique_for_overwrite<char[]>(text.size() + 1);
    text.copy(copy.get(), text.size());
    copy[text.size()] = '\0';
    Add(kArgString, 1, [&copy](Run &run) { run.text = copy.get(); });
    copy.release();
}

void VMCommand::AddPosition(double x, double y, double z) {
    Add(kArgPosition, 1, [=](Run &run) { run.position = {x, y, z}; });
}

void VMCommand::AppendCopy(VMCommand const &other) {
    if (&other == this)
        return;
    Clear();
    other.ForEachRun([this](Run const &run) {
        if (run.kind == kArgString)
            AddString(run.text);
        else
            AddRun(run);
    });
}

void VMCommand::TakeFrom(VMCommand &other) {
    if (&other == this)
        return;
    if (m_first) {
        if (other.m_count != 0)
            FillFrom(other, AddBlock(other.m_count));
        m_count += other.m_count;
    } else {
        ReserveRuns(other.m_first ? static_cast<std::size_t>(other.m_count) : other.m_runCount);
        other.ForEachRun([this](Run const &run) { AddRun(run); });
    }
    other.Disown();
    other.Clear();
}

void VMCommand::DestroyArguments() {
    for (std::size_t i = 0; i < m_runCount; ++i) {
        if (m_runs[i].kind == kArgString)
            delete[] m_runs[i].text;
    }
    m_only.reset();
    m_block.reset();
    m_moreBlocks.clear();
    m_runCount = 0;
    m_count = 0;
    m_first = nullptr;
    m_last = nullptr;
}

VMArguement *VMCommand::GetFirst() {
    MakeChain();
    m_current = m_first;
    return m_current;
}

VMArguement *VMCommand::GetNext() {
    if (m_current)
        m_current = m_current->next;
    return m_current;
}

template <class IsWanted>
bool VMCommand::HoldsOnly(IsWanted isWanted) const {
    bool only = true;
    ForEachRun([&](Run const &run) { only = only && isWanted(run.kind); });
    return only;
}

bool VMCommand::HoldsIntegers() const {
    return HoldsOnly([](std::int32_t kind) { return kind == kArgInteger; });
}

bool VMCommand::HoldsNumbers() const {
    return HoldsOnly([](std::int32_t kind) { return kind == kArgInteger || kind == kArgDouble; });
}

bool VMCommand::HoldsPositions() const {
    return HoldsOnly([](std::int32_t kind) { return kind == kArgPosition; });
}

void VMCommand::CopyIntegers(std::int32_t *out) const {
    ForEachRun([&out](Run const &listed) {
        // A copy, which nothing that is written can change.
        Run const run = listed;
        if (run.kind == kArgInteger) {
            for (std::int32_t i = 0; i < run.count; ++i)
                out[i] = run.IntegerAt(i);
        } else {
            for (std::int32_t i = 0; i < run.count; ++i)
                out[i] = run.kind == kArgDouble
                             ? static_cast<std::int32_t>(std::bit_cast<std::uint64_t>(run.DoubleAt(i)))
                             : 0;
        }
        out += run.count;
    });
}

void VMCommand::CopyDoubles(double *out) const {
    ForEachRun([&out](Run const &run) {
        for (std::int32_t i = 0; i < run.count; ++i)
            *out++ = run.AsDouble(i);
    });
}

void VMCommand::CopyPositions(double *out) const {
    ForEachRun([&out](Run const &run) {
        for (std::int32_t i = 0; i < run.count; ++i) {
            Position const at = run.kind == kArgPosition ? run.position : Position{};
            for (double const coordinate : {at.x, at.y, at.z})
                *out++ = coordinate;
        }
    });
}

int VMCommand::ReadUpTo(std::int32_t most, double *values) const {
    if (m_count > most || !HoldsNumbers())
        return 0;
    std::fill(values, values + most, 0.0);
    CopyDoubles(values);
    return 1;
}

int VMCommand::ReadNumbers(double &x, double &y, double &z) const {
    double values[3];
    if (!ReadUpTo(3, values))
        return 0;
    x = values[0];
    y = values[1];
    z = values[2];
    return 1;
}

int VMCommand::ReadNumbers(double &x, double &y) const {
    double values[2];
    if (!ReadUpTo(2, values))
        return 0;
    x = values[0];
    y = values[1];
    return 1;
}

int VMCommand::ReadNumber(double &value) const {
    return m_count == 1 ? ReadUpTo(1, &value) : 0;
}

int VMCommand::ReadInteger(std::int32_t &value) const {
    if (m_count != 1 || !HoldsNumbers())
        return 0;
    CopyIntegers(&value);
    return 1;
}

/// Writes the text of an argument; false, with `piece` as it was, for a kind without a form of its own.
bool VMCommand::Run::Form(std::int32_t index, std::string &piece) const {
    switch (kind) {
    case kArgInteger:
        piece = Utf8Of(FormatWide(L"%d", IntegerAt(index)));
        break;
    case kArgDouble:
        piece = Utf8Of(FormatWide(L"%f", DoubleAt(index)));
        break;
    case kArgString:
        piece = text;
        break;
    case kArgRepeat:
        piece = Utf8Of(FormatWide(L"%f#%d", repeat.real, repeat.count));
        break;
    case kArgError:
        piece = "Error";
        break;
    default:
        return false;
    }
    return true;
}

CString const &VMCommand::MakeText() {
    m_text = WideOf(GetCommandString());
    return m_text;
}

char const *VMCommand::GetCommandString() {
    m_narrowText.clear();
    // Not cleared between arguments: a kind without a form of its own repeats the text before it, comma and all.
    std::string piece;
    std::int32_t left = m_count;
    ForEachRun([&](Run const &run) {
        for (std::int32_t i = 0; i < run.count; ++i) {
            --left;
            if (run.Form(i, piece) && left > 0)
                piece += ',';
            m_narrowText += piece;
        }
    });
    return m_narrowText.c_str();
}

} // namespace zvi::lib
