#include "zvi/command/VMCommand.h"

#include <memory>

namespace zvi::lib {

VMArguement::~VMArguement() {
    if (kind == kArgString)
        delete[] text;
}

VMCommand::~VMCommand() {
    Clear();
}

VMArguement &VMCommand::Append(ArguementKind kind) {
    auto *const argument = new VMArguement;
    argument->kind = kind;
    if (m_last)
        m_last->next = argument;
    else
        m_first = argument;
    m_last = argument;
    ++m_count;
    return *argument;
}

void VMCommand::AddInteger(std::int32_t value) {
    Append(kArgInteger).integer = value;
}

void VMCommand::AddDouble(double value) {
    Append(kArgDouble).real = value;
}

void VMCommand::AddString(std::string_view text) {
    auto copy = std::make_unique_for_overwrite<char[]>(text.size() + 1);
    text.copy(copy.get(), text.size());
    copy[text.size()] = '\0';
    VMArguement &argument = Append(kArgString);
    argument.text = copy.release();
}

void VMCommand::AddPosition(double x, double y, double z) {
    VMArguement &argument = Append(kArgPosition);
    argument.x = x;
    argument.y = y;
    argument.z = z;
}

void VMCommand::AppendCopy(VMCommand const &other) {
    if (&other == this)
        return;
    Clear();
    for (VMArguement const *from = other.m_first; from; from = from->next) {
        if (from->kind == kArgString) {
            AddString(from->text);
            continue;
        }
        VMArguement &copy = Append(static_cast<ArguementKind>(from->kind));
        copy.bits = from->bits;
        copy.count = from->count;
        copy.x = from->x;
        copy.y = from->y;
        copy.z = from->z;
    }
}

void VMCommand::TakeFrom(VMCommand &other) {
    if (&other == this)
        return;
    if (other.m_first) {
        if (m_last)
            m_last->next = other.m_first;
        else
            m_first = other.m_first;
        m_last = other.m_last;
        m_count += other.m_count;
        other.m_first = nullptr;
    }
    other.Clear();
}

void VMCommand::Clear() {
    while (m_first) {
        VMArguement *const next = m_first->next;
        delete m_first;
        m_first = next;
    }
    m_opCode = 0;
    m_count = 0;
    m_last = nullptr;
    m_current = nullptr;
}

VMArguement *VMCommand::GetFirst() {
    m_current = m_first;
    return m_current;
}

VMArguement *VMCommand::GetNext() {
    if (m_current)
        m_current = m_current->next;
    return m_current;
}

int VMCommand::ReadUpTo(std::int32_t most, double *values) const {
    if (m_count > most)
        return 0;
    for (VMArguement const *argument = m_first; argument; argument = argument->next) {
        if (!argument->IsNumber())
            return 0;
    }
    VMArguement const *argument = m_first;
    for (std::int32_t i = 0; i < most; ++i) {
        values[i] = argument ? argument->AsDouble() : 0.0;
        argument = argument ? argument->next : nullptr;
    }
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
    if (m_count > 1 || !m_first || !m_first->IsNumber())
        return 0;
    value = m_first->AsDouble();
    return 1;
}

int VMCommand::ReadInteger(std::int32_t &value) const {
    if (m_count > 1 || !m_first || !m_first->IsNumber())
        return 0;
    value = static_cast<std::int32_t>(static_cast<std::uint32_t>(m_first->bits));
    return 1;
}

CString const &VMCommand::MakeText() {
    m_text.Empty();
    // Not cleared between arguments: a kind without a form of its own repeats the text before it.
    CString piece;
    for (VMArguement const *argument = m_first; argument; argument = argument->next) {
        wchar_t const *const comma = argument->next ? L"," : L"";
        switch (argument->kind) {
        case kArgInteger:
            piece.Format(L"%d%s", argument->integer, comma);
            break;
        case kArgDouble:
            piece.Format(L"%f%s", argument->real, comma);
            break;
        case kArgString:
            piece.Format(L"%S%s", argument->text, comma);
            break;
        case kArgRepeat:
            piece.Format(L"%f#%d%s", argument->real, argument->count, comma);
            break;
        case kArgError:
            piece.Format(L"Error%s", comma);
            break;
        default:
            break;
        }
        m_text += piece;
    }
    return m_text;
}

char const *VMCommand::GetCommandString() {
    MakeText();
    m_narrowText.clear();
    for (int i = 0; i < m_text.GetLength(); ++i)
        m_narrowText.push_back(static_cast<char>(m_text.GetAt(i)));
    return m_narrowText.c_str();
}

} // namespace zvi::lib
