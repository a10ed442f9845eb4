#include "common/cvar.h"

#include "common/console.h"
#include "common/utils.h"

std::vector<S_Cvar> CVAR;

namespace {
S_Cvar* Find(const std::string& name) {
    for (S_Cvar& cvar : CVAR)
        if (cvar.name == name)
            return &cvar;
    return nullptr;
}

// The name token of a console line: its first word, with leading '/' and '?'
// skipped and cut at the next one (so "?showfps" still names showfps).
std::string NameToken(const std::string& head) { return NameWord(head, " \t\r\n"); }
}  // namespace

void Cvar_Register(const S_Cvar& cvar) { CVAR.push_back(cvar); }

void Cvar_Clear() { CVAR.clear(); }

void Cvar_Set(const std::string& name, const std::string& value) {
    if (S_Cvar* cvar = Find(name))
        cvar->value = value;
}

std::string Cvar_Get(const std::string& name) {
    const S_Cvar* cvar = Find(name);
    return cvar ? cvar->value : std::string();
}

std::string Cvar_GetString(const S_Cvar& cvar) { return Cvar_Get(cvar.name); }
int Cvar_GetInt(const S_Cvar& cvar) { return StringToInt(Cvar_Get(cvar.name)); }
float Cvar_GetFloat(const S_Cvar& cvar) { return StringToFloat(Cvar_Get(cvar.name)); }
void Cvar_Set(const S_Cvar& cvar, const std::string& value) { Cvar_Set(cvar.name, value); }

bool Menu_Visible() { return Cvar_GetInt(m_menu) != 0; }

bool Cvar_Check(const std::string& line) { return Find(line.substr(0, line.find(' '))) != nullptr; }

bool Cvar_Run(const std::string& line) {
    size_t blank = line.find(' ');
    std::string head = line.substr(0, blank);
    std::string rest = blank == std::string::npos ? line : line.substr(blank + 1);
    std::string token = NameToken(head);

    S_Cvar* cvar = Find(token);
    if (!cvar)
        return false;

    const char* name = cvar->name.c_str();
    if (!line.empty() && line[0] == '?')
        Con_Print("name: \"%s\"  description: \"%s\"", name, cvar->description);
    else if (rest == head)
        Con_Print("\"%s\" is set to: %s  default: %s", name, cvar->value.c_str(), cvar->defaultValue.c_str());
    else if (cvar->type == CVAR_READONLY)
        Con_Print("cvar \"%s\" is read only!  is: %s  default: %s", name, cvar->value.c_str(),
                  cvar->defaultValue.c_str());
    else if (cvar->type == CVAR_CHEAT)
        Con_Print("cvar \"%s\" is cheat protected!  is: %s  default: %s", name, cvar->value.c_str(),
                  cvar->defaultValue.c_str());
    else {
        // Copy first: the set may not alias the record we print from.
        std::string shown = rest;
        Cvar_Set(cvar->name, rest);
        Con_Print("cvar \"%s\" has been set to %s", name, shown.c_str());
    }
    return true;
}
