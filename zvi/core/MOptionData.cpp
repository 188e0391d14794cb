#include "zvi/core/MOptionData.h"

namespace zvi::lib {

MOptionData::~MOptionData() = default;

void MOptionData::RegOption(MOPTDATA *option) {
    m_options.PushBack(option);
}

void MOptionData::IOData(MOptionRW *rw, OPTION_IOTYPE ioType) {
    OptionCategory *kept = nullptr;
    int const isThere = rw->GetCategoryData(GetCategory(), &kept);
    if (!kept)
        return; // a storage without categories
    if (ioType == OPTION_WRITE)
        WriteTo(*kept);
    else if (ioType == OPTION_READ && isThere != 0)
        ReadFrom(*kept);
}

void MOptionData::ReadFrom(OptionCategory const &kept) const {
    for (MOPTDATA *const option : m_options) {
        auto const found = kept.find(option->GetKeyWord());
        if (found == kept.end())
            continue;
        CString text = found->second;
        option->SetType(text);
    }
}

void MOptionData::WriteTo(OptionCategory &kept) const {
    for (MOPTDATA *const option : m_options) {
        CString const text = option->GetType();
        kept[option->GetKeyWord()] = text;
    }
}

} // namespace zvi::lib
