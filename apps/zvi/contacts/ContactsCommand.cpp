#include "apps/zvi/contacts/ContactsCommand.h"

#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/OutputFile.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/common/TextDecoding.h"
#include "apps/zvi/contacts/ContactsOptions.h"
#include "apps/zvi/contacts/input/ReadStl.h"
#include "apps/zvi/contacts/output/ContactReport.h"

#include "zvi/interface/IProgressBar.h"

#include <map>

namespace zvi::app {

namespace {

std::string ShownName(std::string const &file) {
    return file == "-" ? "standard input" : DecodeDxfText(file, "");
}

std::string Count(std::size_t count, std::string const &one, std::string const &many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// The library's progress bar with words of our own: it is called for each hundredth of the way.
class ContactBar final : public zvi_interface::IProgressBar {
public:
    explicit ContactBar(Progress &to) : m_progress(to) { SetInstance(this); }
    void SetText(wchar_t const *) override { ++m_hundredths; }
    void Refresh() override {
        m_progress.Step("comparing triangles, " + std::to_string(m_hundredths) + " % of the space");
    }

private:
    Progress &m_progress;
    int m_hundredths = 0;
};

/// What people call the solid: by its file, and by its own name or number where the file has several.
std::string BodyName(std::string const &file, StlFile const &stl, std::size_t solid) {
    std::string base = file == "-" ? "standard input" : DecodeDxfText(NameOf(PathOf(file).stem()), "");
    if (stl.solids.size() == 1)
        return base;
    std::string const &name = stl.solids[solid].name;
    return base + ":" + (name.empty() ? std::to_string(solid + 1) : name);
}

void TellFile(Console &console, std::string const &file, StlFile const &stl) {
    std::size_t triangles = 0;
    for (StlSolid const &solid : stl.solids)
        triangles += solid.triangles.size();
    auto const tell = [&](std::string const &what) {
        console.err << "zvi: " << ShownName(file) << ": " << what << "\n";
    };
    tell("read " + Count(stl.solids.size(), "body", "bodies") + " of " + Count(triangles, "triangle", "triangles"));
    if (stl.leftOut > 0)
        tell("left out " + Count(stl.leftOut, "triangle", "triangles") + " with corners that are no finite numbers");
    if (stl.bytesAfter > 0)
        tell("passed over " + Count(stl.bytesAfter, "byte", "bytes") + " after the last triangle");
}

/// Gives bodies of one name numbers.
void TellApart(std::vector<std::string> &names) {
    std::map<std::string, int> met;
    for (std::string &name : names) {
        int const time = ++met[name];
        if (time > 1)
            name += " (" + std::to_string(time) + ")";
    }
}

ContactInput ReadBodies(Console &console, ContactsOptions const &options, Progress &progress) {
    ContactInput input;
    input.tolerance = options.tolerance;
    for (std::string const &file : options.files) {
        if (file == "-")
            TellWaiting(console, "an STL file", "contacts");
        else
            progress.Step("reading " + ShownName(file));
        StlFile stl;
        try {
            stl = ReadStl(ReadWhole(file, console.in));
        } catch (InputError const &error) {
            progress.Clear();
            throw InputError(0, Joined(ShownName(file), ":",
                                       error.Line() != 0 ? std::to_string(error.Line()) + ":" : std::string(), " ",
                                       error.what()));
        }
        progress.Clear();
        TellFile(console, file, stl);
        for (std::size_t i = 0; i < stl.solids.size(); ++i) {
            input.names.push_back(BodyName(file, stl, i));
            input.bodies.push_back(std::move(stl.solids[i].triangles));
        }
    }
    TellApart(input.names);
    return input;
}

lib::BodyContacts Search(ContactInput const &input, Progress &progress) {
    ContactBar bar(progress);
    lib::BodyContacts found = lib::FindBodyContacts(input.bodies, input.tolerance);
    if (!found.isComplete)
        throw InputError(0, "more than 50 million pairs of triangles are within " + ShortNumber(input.tolerance) +
                                " of each other; take a smaller --tolerance");
    return found;
}

void TellFound(Console &console, ContactInput const &input, lib::BodyContacts const &found) {
    std::string const within = " within " + ShortNumber(input.tolerance);
    if (input.bodies.size() < 2)
        console.err << "zvi: one body alone has no contacts; give two or more\n";
    else if (found.contacts.empty())
        console.err << "zvi: no two bodies have triangles" << within << " of each other\n";
    else
        console.err << "zvi: the smallest gap is the smallest among pairs of triangles" << within << "\n";
    console.err.flush();
}

int FindContacts(Console &console, ContactsOptions const &options) {
    Progress progress(console, options.progress);
    ContactInput const input = ReadBodies(console, options, progress);
    lib::BodyContacts const found = Search(input, progress);
    progress.Clear();
    if (!options.objFile.empty()) {
        std::string const failure = WriteWholeFile(options.objFile, ContactObj(input, found));
        if (!failure.empty())
            throw InputError(0, options.objFile + ": " + failure);
    }
    TellFound(console, input, found);
    return WriteResult(console, options.json ? ContactJson(input, found) : ContactTable(input, found));
}

} // namespace

int RunContacts(std::vector<std::string> const &arguments, Console &console) {
    ContactsOptions const options = ParseContactsOptions(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    return FindContacts(console, options);
}

} // namespace zvi::app
