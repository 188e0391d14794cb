#include "apps/zvi/settings/SettingsInForce.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/WideText.h"

#include "zvi/core/MOptionDB.h"
#include "zvi/core/OptionValues.h"

#include <functional>
#include <map>
#include <utility>

namespace zvi::app {

namespace {

using Key = std::pair<CString, CString>; ///< category and keyword

/// A text of the file, and its line.
struct Written {
    CString text;
    int line = 0;
};

/// Storage that shows its texts to the groups and keeps nothing of theirs.
class Shown : public lib::MOptionRW {
public:
    std::map<CString, lib::OptionCategory> categories;
    /// Called with each group when it has taken its values.
    std::function<void(lib::MOptionData &)> look;

    int ReadOption(std::vector<lib::MOptionData *> &groups) override {
        for (lib::MOptionData *const group : groups) {
            if (!group)
                continue;
            group->InitOption();
            group->IOData(this, lib::MOptionData::OPTION_READ);
            look(*group);
            group->InitOption();
        }
        return 1;
    }
    int WriteOption(std::vector<lib::MOptionData *> &) override { return 1; }
    int GetCategoryData(CString category, lib::OptionCategory **out) override {
        auto const found = categories.find(category);
        *out = found == categories.end() ? &m_none : &found->second;
        return found == categories.end() ? 0 : 1;
    }

private:
    lib::OptionCategory m_none;
};

std::string ValueText(MOPTDATA &option) {
    auto const *const number = dynamic_cast<MOPTDOUBLE *>(&option);
    return number ? ExactNumber(*number) : Utf8Of(option.GetType());
}

std::string WrongValueOf(MOPTDATA &option, CString const &value) {
    std::string const text = Utf8Of(value);
    bool const isTruth = dynamic_cast<MOPTBOOL *>(&option);
    if (isTruth && value != L"TRUE" && value != L"FALSE")
        return "is neither TRUE nor FALSE; write one of them in capitals";
    bool const isNumber = dynamic_cast<MOPTDOUBLE *>(&option) || dynamic_cast<MOPTFLOAT *>(&option);
    if (isNumber && !ParseNumber(text))
        return "is no number; write one such as 0.001 or 1e-6";
    bool const isWhole = dynamic_cast<MOPTINT *>(&option) || dynamic_cast<MOPTCHAR *>(&option);
    return isWhole && !ParseInteger(text) ? "is no whole number" : "";
}

} // namespace

SettingsInForce ReadSettingsInForce(std::wstring const &path) {
    SettingsInForce inForce;
    std::map<Key, Written> file;
    Shown shown;
    auto const take = [&](lib::SettingsPlace const &place) {
        lib::OptionCategory &category = shown.categories[CString(place.category)];
        if (place.line.kind != lib::SettingsLine::Kind::kValue)
            return;
        CString const keyword(place.line.name);
        category[keyword] = CString(place.line.value);
        file[{CString(place.category), keyword}] = {CString(place.line.value), place.number};
    };
    inForce.end = lib::ReadSettings(path, take, &inForce.lastLine);
    std::map<Key, SettingInForce> rows;
    for (auto const &[key, written] : file)
        rows[key] = {key.first, key.second, Utf8Of(written.text), written.line, "", false};
    shown.look = [&](lib::MOptionData &group) {
        for (MOPTDATA *const option : group.Options()) {
            Key const key(group.GetCategory(), option->GetKeyWord());
            auto const found = file.find(key);
            bool const isWrong = found != file.end() && !WrongValueOf(*option, found->second.text).empty();
            rows[key] = {key.first,
                         key.second,
                         ValueText(*option),
                         found == file.end() ? 0 : found->second.line,
                         isWrong ? Utf8Of(found->second.text) : "",
                         true};
        }
    };
    lib::MOptionDB::Instance()->ReadData(&shown);
    for (auto &[key, row] : rows)
        inForce.settings.push_back(std::move(row));
    return inForce;
}

std::string WrongValue(CString const &category, CString const &keyword, CString const &value) {
    std::string wrong;
    Shown shown;
    shown.look = [&](lib::MOptionData &group) {
        for (MOPTDATA *const option : group.Options())
            if (group.GetCategory() == category && option->GetKeyWord() == keyword)
                wrong = WrongValueOf(*option, value);
    };
    lib::MOptionDB::Instance()->ReadData(&shown);
    return wrong;
}

} // namespace zvi::app
