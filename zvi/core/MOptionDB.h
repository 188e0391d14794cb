#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/core/MOptionData.h"
#include "zvi/core/MOptionRW.h"

#include <map>

namespace zvi::lib {

/// The registry of option groups by category, one for the process. The groups are not owned, and live as long as it is
/// asked for them.
///
/// The library's own groups, `OptionGenTol` and `OptionAnalCtrl`, are in it when the library has been loaded, and
/// before that as soon as anybody asks, so that objects which register at load may do so in any order. Nothing is read
/// from storage until the application calls `ReadData`:
/// ```
/// MOptionRWImplFile settings; // TEKOSetting.cfg in the user's documents folder
/// MOptionDB::Instance()->ReadData(&settings);
/// ```
/// Not locked: fill, read and write it on the application's main thread.
class ZVI_API MOptionDB {
public:
    /// The process's registry: made at the first call, destroyed at exit.
    static MOptionDB *Instance();

    /// A registry of its own, without groups.
    MOptionDB() = default;
    /// Copies share the groups.
    MOptionDB(MOptionDB const &) = default;
    MOptionDB &operator=(MOptionDB const &) = default;
    /// The groups stay, which it does not own.
    virtual ~MOptionDB();

    /// The group of a category. An absent one is entered with a null group, which is the answer: who tests for absence
    /// calls `RemoveOptData` behind it.
    virtual MOptionData *GetOptData(CString key);
    /// Enters a group. The first one of a category stays, a later one is ignored.
    virtual void SetOptData(CString key, MOptionData *data);
    /// Takes a category out, if it is there; the group stays as it is.
    virtual void RemoveOptData(CString key);
    /// Does nothing; it keeps the operations behind it in their places.
    virtual void Reserved();
    /// Lets the storage give its values to the groups, in the order of their categories.
    virtual void ReadData(MOptionRW *rw);
    /// Lets the storage keep the values of the groups, in the same order.
    virtual void WriteData(MOptionRW *rw);

private:
    std::map<CString, MOptionData *> m_groups;
};

} // namespace zvi::lib
