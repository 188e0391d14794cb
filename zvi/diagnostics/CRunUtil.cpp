#include "zvi/diagnostics/CRunUtil.h"

#include "zvi/host/ChildProcess.h"
#include "zvi/host/Environment.h"
#include "zvi/host/Messages.h"
#include "zvi/host/Paths.h"
#include "zvi/text/MFileCtrl.h"

#include <string>
#include <string_view>

namespace zvi::lib {

namespace {

/// Room for the path of a folder, the zero at its end included.
constexpr std::size_t kLongestFolder = 260;
/// How long the end of a program is waited for at a time.
constexpr std::chrono::milliseconds kWait{10000};

std::wstring WideOf(CString const &text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

/// Makes a folder current and, at the end, the one before.
class CurrentFolder {
public:
    explicit CurrentFolder(std::wstring const &folder) {
        if (folder.empty())
            return;
        m_before = host::CurrentFolder();
        if (m_before.size() >= kLongestFolder)
            m_before.clear();
        else if (!m_before.ends_with(L'\\') && m_before.size() + 1 < kLongestFolder)
            m_before += L'\\';
        host::SetCurrentFolder(folder);
    }
    ~CurrentFolder() {
        if (!m_before.empty())
            host::SetCurrentFolder(m_before);
    }
    CurrentFolder(CurrentFolder const &) = delete;
    CurrentFolder &operator=(CurrentFolder const &) = delete;

private:
    std::wstring m_before;
};

void WaitForEnd(host::ChildProcess &child) {
    host::EnableMainWindow(false);
    while (!child.WaitForEnd(kWait))
        ;
    host::EnableMainWindow(true);
}

/// What the value of a variable begins with.
enum class Base { kNone, kCapitals, kConvert };

struct Variable {
    wchar_t const *name;
    Base base;
    wchar_t const *rest;
};

constexpr Variable kVariables[] = {
    {L"CASROOT", Base::kCapitals, L""},
    {L"CSF_LANGUAGE", Base::kNone, L"us"},
    {L"CSF_XSMessage", Base::kCapitals, L"\\XSMessage"},
    {L"CSF_SHMessage", Base::kCapitals, L"\\SHMessage"},
    {L"CSF_UnitsLexicon", Base::kCapitals, L"\\UnitsAPI\\Lexi_Expr.dat"},
    {L"CSF_UnitsDefinition", Base::kCapitals, L"\\UnitsAPI\\Units.dat"},
    {L"CSF_MDTVFontDirectory", Base::kCapitals, L"\\FontMFT"},
    {L"CSF_MDTVTexturesDirectory", Base::kCapitals, L"\\Textures"},
    {L"CSF_IGESDefaults", Base::kCapitals, L"\\XSTEPResource"},
    {L"CSF_STEPDefaults", Base::kCapitals, L"\\XSTEPResource"},
    {L"CSF_StandardDefaults", Base::kCapitals, L"\\StdResource"},
    {L"CSF_StandardLiteDefaults", Base::kCapitals, L"\\StdResource"},
    {L"CSF_XCAFDefaults", Base::kCapitals, L"\\StdResource"},
    {L"CSF_PluginDefaults", Base::kCapitals, L"\\StdResource"},
    {L"CSF_ResourcesDefaults", Base::kCapitals, L"\\StdResource"},
    {L"CSF_XmlOcafResource", Base::kCapitals, L"\\XmlOcafResource"},
    {L"CSF_XTDefaults", Base::kCapitals, L"\\XSTEPResourceAdv"},
    {L"CSF_Graphic3dLib", Base::kCapitals, L"\\StdResource"},
    {L"CSF_GraphicShr", Base::kCapitals, L"\\TKOpenGl.dll"},
    {L"STATION", Base::kNone, L"wnt"},
    {L"TARGET_DBMS", Base::kNone, L"DFLT"},
    {L"CSF_EXCEPTION_PROMPT", Base::kNone, L"1"},
    {L"SH_Resources", Base::kConvert, L"resource"},
    {L"CSF_ShapeHealingDefaults", Base::kConvert, L"resource"},
    {L"CSF_ShapeHealingUserDefaults", Base::kConvert, L"resource"},
    {L"CSF_BatchHealDefaults", Base::kConvert, L""},
    {L"CSF_BatchHealUserDefaults", Base::kConvert, L""},
    {L"MMGT_OPT", Base::kNone, L"0"},
    {L"MMGT_REENTRANT", Base::kNone, L"1"},
    {L"MMGT_CLEAR", Base::kNone, L"1"},
};

} // namespace

CRunUtil *CRunUtil::m_pInstance = nullptr;

CRunUtil::CRunUtil() {
    m_pInstance = this;
}

CRunUtil::~CRunUtil() {
    m_pInstance = nullptr;
}

CRunUtil *CRunUtil::Instance() {
    return m_pInstance;
}

int CRunUtil::Run(CString &program, CString &arguments, unsigned int showWindow, int wait) const {
    std::wstring const folder = WideOf(MFileCtrl(program).GetFilePath());
    CurrentFolder const current(folder);
    host::ChildProcess child;
    unsigned int const error = child.Start({.program = WideOf(program),
                                            .arguments = WideOf(arguments),
                                            .folder = folder,
                                            .quotesProgram = false,
                                            .captures = false,
                                            .showState = showWindow});
    if (error != 0)
        return 0;
    if (wait != 0)
        WaitForEnd(child);
    return 1;
}

void CRunUtil::SetConvertEnvironment() {
    CString const base = MFileCtrl(host::ModulePath().c_str()).GetFilePath();
    CString capitals = base + L"Convert\\OCC";
    capitals.MakeUpper();
    CString const convert = base + L"Convert\\";
    for (Variable const &variable : kVariables) {
        CString const start = variable.base == Base::kCapitals  ? capitals
                              : variable.base == Base::kConvert ? convert
                                                                : CString();
        host::SetEnvironmentPath(variable.name, WideOf(start + variable.rest));
    }
}

} // namespace zvi::lib
