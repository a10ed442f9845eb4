// The high-score table: read from data/stats.cfg at start-up, one entry
// added at the end of each game, the best 20 written back when an entry is
// recorded and again at shutdown.
#include "common/scores.h"

#include <algorithm>
#include <sstream>

#include "common/archive.h"
#include "common/cvar.h"
#include "common/gamestats.h"
#include "common/savefile.h"
#include "common/utils.h"

S_Score Score;

namespace {
const std::string SCORES_FILE = std::string("data/") + "stats.cfg";

int LeadingScore(const std::string& entry) { return StringToInt(entry.substr(0, entry.find(' '))); }

// Stable, so that of two equal scores the older entry stays above.
void SortScores() { std::stable_sort(Score.entries.begin(), Score.entries.end(), cmp); }
}  // namespace

bool cmp(const std::string& a, const std::string& b) { return LeadingScore(a) > LeadingScore(b); }

void Scores_Load() {
    // Straight from the disk: the table is the player's, never the archive's.
    // A table longer than any we write is refused whole (logged): the game
    // starts with an empty one.
    if (!FileExists(SCORES_FILE))
        return;
    std::istringstream in(ReadDataFile(SCORES_FILE));
    std::string line;
    while (std::getline(in, line))
        if (!line.empty())
            Score.entries.push_back(line);
    SortScores();
}

void SetScore() {
    // An empty name still makes an entry, ending with the blank.
    Score.entries.push_back(IntToString(Game_Stats.score) + " " + Cvar_GetString(r_highscore));
    SortScores();
}

void Scores_Save() {
    std::string text;
    size_t count = std::min(Score.entries.size(), size_t(MAX_SCORES_SHOWN));
    for (size_t i = 0; i < count; i++)
        text += Score.entries[i] + "\n";
    // A table that cannot be written leaves the old file, and the player is told.
    SaveFile_Write(SCORES_FILE, text, "scores");
}

void Scores_Reset() { Score.entries.clear(); }
