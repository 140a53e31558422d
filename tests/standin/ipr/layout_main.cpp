// Reads the fields of a record where an independently built plug-in would: by offset. A program of its own,
// since the test framework exists for one string ABI only. Exits with the number of fields that are
// elsewhere.
#include <zelk/ipr/delta.h>
#include <zelk/ipr/endpoint.h>
#include <zelk/ipr/keys.h>
#include <zelk/ipr/listener.h>
#include <zelk/ipr/observe.h>
#include <zelk/ipr/publisher.h>
#include <zelk/ipr/reader.h>

#include <cstdio>
#include <cstring>

namespace
{
int failures = 0;

void check(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s is not where it is expected\n", what);
    ++failures;
}

template <typename T>
bool holdsAt(const zelk::ipr::DeltaParm& parm, std::size_t offset, const T& value)
{
    return std::memcmp(reinterpret_cast<const char*>(&parm) + offset, &value, sizeof value) == 0;
}

bool isZero(const zelk::ipr::DeltaParm& parm, std::size_t from, std::size_t to)
{
    const char* bytes = reinterpret_cast<const char*>(&parm);
    for (std::size_t i = from; i < to; ++i)
        if (bytes[i] != 0)
            return false;
    return true;
}
} // namespace

int main()
{
    std::map<std::string, zelk::ipr::DeltaParm> parms;
    zelk::ipr::DeltaParm& parm = parms["new"];
    const std::size_t reserved = 88 + sizeof(std::string);
    check(sizeof(std::string) == (_GLIBCXX_USE_CXX11_ABI ? 32 : 8), "the end of a text");
    check(isZero(parm, 0, 88) && parm.str.empty() && isZero(parm, reserved, reserved + 8),
          "the zero of a new value");

    parm.type = KR_TYPE_RGBA;
    parm.value.rgba.a = 0.25f;
    parm.matrix.m[3][2] = 0.5f;
    parm.reserved = &parm;
    check(holdsAt(parm, 0, static_cast<unsigned char>(6)), "type");
    check(holdsAt(parm, 8 + 12, 0.25f), "the last component of value");
    check(holdsAt(parm, 24 + 14 * 4, 0.5f), "the third item of matrix's last row");
    check(reinterpret_cast<char*>(&parm.str) - reinterpret_cast<char*>(&parm) == 88, "str");
    check(holdsAt(parm, reserved, &parm), "the last member");
    return failures;
}
