#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/core/MOptionRW.h"
#include "zvi/core/ReadSettings.h"

#include <istream>
#include <map>
#include <system_error>
#include <vector>

namespace zvi::lib {

/// Options in a settings file: read when the object is made, written when it is asked to and when it is destroyed.
/// ReadSettings.h has the grammar. The file is a text in the system's encoding without a mark; what was written reads
/// back the same, and bytes that are no characters come back as they were.
///
/// The file is never seen half: whenever the process is ended, it holds the old settings or the new ones
/// (`host::ReplaceContent`). Failures are silent: a file that cannot be read counts as empty, one that cannot be
/// written stays as it is, and so does one that is there and could not be read, or not to its end.
///
/// Mind that every object rewrites its file. The new one is sorted by category and keyword; comments and the order and
/// spacing of the lines are lost, and so is whatever stood at and behind a line over 1,023 bytes. A value that no such
/// line holds is left out of the file, and so is a category with a longer name. Two objects on one file overwrite each
/// other's settings.
class ZVI_API MOptionRWImplFile : public MOptionRW {
public:
    /// The file `TEKOSetting.cfg` in the folder `Zorvi\Ormeline` of the user's documents, which is made when it is
    /// absent, together with its folders.
    MOptionRWImplFile();
    /// The file `name` in a folder; in the program's own when `folder` is empty. Nothing is made or written yet.
    MOptionRWImplFile(CString folder, CString name);
    /// A copy has the same file and the values of this moment.
    MOptionRWImplFile(MOptionRWImplFile const &) = default;
    MOptionRWImplFile &operator=(MOptionRWImplFile const &) = default;
    /// Writes the file.
    ~MOptionRWImplFile() override;

    int ReadOption(std::vector<MOptionData *> &groups) override;
    /// Takes the values of the groups and writes the file.
    int WriteOption(std::vector<MOptionData *> &groups) override;
    /// Lends a category, which stays with this object; an absent one is made, so that it will be in the file.
    int GetCategoryData(CString category, OptionCategory **out) override;

    /// Writes the file, and says what stood in the way.
    std::error_code Save() const;

    /// Where the default constructor's file is or would be; nothing is made.
    static CString DefaultPath();

private:
    void SetPathAndName(CString folder, CString name);
    int LoadData();
    void WriteData();
    std::istream &GetLine(std::istream &stream, CString &text);
    CString GetUserDocFolder();
    CString FullPath() const;

    char m_line[kLongestSettingsLine + 1] = {};
    CString m_folder;
    CString m_name;
    std::map<CString, OptionCategory> m_categories;
    bool m_isUnread = false; ///< the file is there and could not be read
};

} // namespace zvi::lib
