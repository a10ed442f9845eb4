// The command-line switches, read once at start-up before the log opens.
#pragma once

class CCmdLine {
public:
    void Proccess(int argc, char** argv);
};
