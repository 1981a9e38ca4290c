#pragma once

#include <QString>

#include <memory>

// Makes an existing file impossible to open for reading by this process for as long as
// the object lives, the way a user meets such a file: on Linux its mode is cleared and
// (for root, whom modes do not stop) the GUI thread gives up the two capabilities that
// override them; on Windows another handle holds the file without sharing it.
class UnreadableFile
{
public:
    explicit UnreadableFile(const QString &path);
    ~UnreadableFile();
    UnreadableFile(const UnreadableFile &) = delete;
    UnreadableFile &operator=(const UnreadableFile &) = delete;

    bool ok() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};
