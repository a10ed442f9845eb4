// The high-score table (data/stats.cfg, best first, at most 20 lines
// written) and the HUD's lives and score.
#pragma once

#include <string>
#include <vector>

struct S_Score {
    std::vector<std::string> entries;  // "score name", best first
};
extern S_Score Score;

constexpr int MAX_SCORES_SHOWN = 20;

bool cmp(const std::string& a, const std::string& b);  // descending by leading number
void Scores_Load();                                    // from disk, blank lines skipped, sorted
void SetScore();                                       // the current score under the name in "r_highscore"
// The best 20, through a temporary file and a rename; a failure is told once
// (SaveFile_Write) and leaves the old file.
void Scores_Save();
void Game_HUD();      // "Lives %d", "Score %d" at width - 150
void Scores_Reset();  // empties the table
