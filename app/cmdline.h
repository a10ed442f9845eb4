// The command-line switches, read once at start-up before the log opens.
#pragma once

class CCmdLine {
public:
    // Reads the switches ("-help", "-vlog", "-menuxm", "-menu", "-world");
    // unknown words are ignored. The log is not open yet, so what they log
    // reaches only the console buffer (and -help standard output too).
    void Proccess(int argc, char** argv);
};
