#include "key_file.h"

#include <zelk/ipr/keys.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zmq.h>

#include <cerrno>
#include <cstring>
#include <sstream>

namespace zelk::ipr
{
namespace
{
constexpr std::size_t key_size = 40; // characters of Z85
constexpr std::size_t max_file_size = 64 * 1024;

struct KeyRow
{
    const char* name;
    std::string Keys::*key;
};

const KeyRow key_rows[] = {
    {"render_public", &Keys::serverPublic},
    {"render_secret", &Keys::serverSecret},
    {"host_public", &Keys::clientPublic},
    {"host_secret", &Keys::clientSecret},
};

const char remedy[] = " Make a new one with \"kshop keys\" and give it to hosts and renders alike.";

std::string reason() { return std::strerror(errno); }

struct File
{
    int descriptor;
    ~File()
    {
        if (descriptor >= 0)
            close(descriptor);
    }
};

bool makePair(std::string& publicKey, std::string& secretKey)
{
    char publicText[key_size + 1] = "";
    char secretText[key_size + 1] = "";
    if (zmq_curve_keypair(publicText, secretText) != 0)
        return false;
    publicKey = publicText;
    secretKey = secretText;
    return true;
}

std::string textOf(const Keys& keys)
{
    std::string text =
        "# Keys of the interactive render. Whoever can read this file can read edits and send them.\n";
    for (const KeyRow& row : key_rows)
        text += std::string(row.name) + " " + keys.*row.key + "\n";
    return text;
}

bool writeAll(int descriptor, const std::string& text)
{
    std::size_t done = 0;
    while (done < text.size())
    {
        const ssize_t written = write(descriptor, text.data() + done, text.size() - done);
        if (written < 0 && errno != EINTR)
            return false;
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
    return fsync(descriptor) == 0;
}

bool readAll(int descriptor, std::string& text)
{
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(descriptor, buffer, sizeof buffer)) > 0 && text.size() <= max_file_size)
        text.append(buffer, static_cast<std::size_t>(count));
    return count >= 0;
}

// Why nobody should trust what the open file holds; empty if all is well.
std::string objectionTo(const File& file)
{
    struct stat status = {};
    if (fstat(file.descriptor, &status) != 0)
        return "cannot be read: " + reason() + ".";
    if (!S_ISREG(status.st_mode))
        return "is no regular file. Name a file that \"kshop keys\" has made.";
    if (status.st_uid != geteuid() && status.st_uid != 0)
        return "belongs to another user. Use a file of your own.";
    if ((status.st_mode & 077) != 0)
        return "can be read by other users. Run \"chmod 600\" on it, or make a new one if they may have done "
               "so.";
    return "";
}

const KeyRow* findKeyRow(const std::string& name)
{
    for (const KeyRow& row : key_rows)
        if (name == row.name)
            return &row;
    return nullptr;
}

bool isKey(const std::string& text)
{
    std::uint8_t bytes[32];
    return text.size() == key_size && zmq_z85_decode(bytes, text.c_str()) != nullptr;
}

// What is wrong with one line; empty if nothing is.
std::string parseLine(const std::string& line, Keys& keys)
{
    std::istringstream words(line);
    std::string name;
    std::string key;
    std::string more;
    words >> name >> key >> more;
    if (name.empty() || name[0] == '#')
        return "";
    const KeyRow* row = findKeyRow(name);
    if (!row)
        return "has an unknown name.";
    if (!isKey(key) || !more.empty())
        return "has no key of 40 characters behind its name.";
    keys.*row->key = key;
    return "";
}

std::string parseKeys(const std::string& text, Keys& keys)
{
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number)
    {
        const std::string problem = parseLine(line, keys);
        if (!problem.empty())
            return "line " + std::to_string(number) + " " + problem;
    }
    for (const KeyRow& row : key_rows)
        if ((keys.*row.key).empty())
            return std::string("the line \"") + row.name + "\" is missing.";
    return "";
}

bool belongTogether(const std::string& publicKey, const std::string& secretKey)
{
    char text[key_size + 1] = "";
    return zmq_curve_public(text, secretKey.c_str()) == 0 && publicKey == text;
}
} // namespace

bool readKeys(const std::string& path, Keys& keys, std::string& error)
{
    const File file{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    if (file.descriptor < 0)
    {
        error = "The key file " + path + " cannot be opened: " + reason() + "." + remedy;
        return false;
    }
    const std::string objection = objectionTo(file);
    if (!objection.empty())
    {
        error = "The key file " + path + " " + objection;
        return false;
    }
    std::string text;
    if (!readAll(file.descriptor, text))
    {
        error = "The key file " + path + " cannot be read: " + reason() + "." + remedy;
        return false;
    }
    std::string problem = parseKeys(text, keys);
    if (problem.empty() && !(belongTogether(keys.serverPublic, keys.serverSecret) &&
                             belongTogether(keys.clientPublic, keys.clientSecret)))
        problem = "public and secret keys do not belong together.";
    if (!problem.empty())
        error = "The key file " + path + " is damaged: " + problem + remedy;
    return problem.empty();
}

bool checkKeys(const std::string& path, std::string& error)
{
    Keys keys;
    return readKeys(path, keys, error);
}

bool makeKeys(const std::string& path, std::string& error)
{
    Keys keys;
    if (!makePair(keys.serverPublic, keys.serverSecret) || !makePair(keys.clientPublic, keys.clientSecret))
    {
        error = "Keys cannot be made: this ZeroMQ is built without CURVE. Install one that has it.";
        return false;
    }
    const File file{open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600)};
    if (file.descriptor < 0)
    {
        error = "The key file " + path + " cannot be made: " + reason() + ". " +
                (errno == EEXIST ? "Remove it first if nobody needs its keys, or choose another name."
                                 : "Choose a directory that exists and that you can write to.");
        return false;
    }
    // The file mode that was asked for, whatever the process's mask takes away from it.
    if (fchmod(file.descriptor, 0600) == 0 && writeAll(file.descriptor, textOf(keys)))
        return true;
    error = "The key file " + path + " cannot be written: " + reason() + ". Choose another place for it.";
    unlink(path.c_str());
    return false;
}

} // namespace zelk::ipr
