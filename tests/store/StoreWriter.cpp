// A second process on a store, driven by the tests.
//
//   store_writer FILE loop          writes one state after the other until it is killed
//   store_writer FILE once N        writes state N
//   store_writer FILE race START N  writes the N states START, START+2, START+4, ...
//   store_writer FILE raise         raises the reload flag for every process
//
// Prints "open" when the store is open and the number of each state once PackFile has returned.
// Ends with 0 unless opening or a PackFile failed.

#include "terminal/store/SqliteStore.h"
#include "tests/store/Generation.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using ta::terminal::OpenResult;
using ta::terminal::PackError;
using ta::terminal::SqliteStore;

int g_failures = 0;

void Say(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

void Write(SqliteStore& store, int generation) {
    ta::test::SaveGeneration(store, generation);
    store.PackFile();
    Say(std::to_string(generation));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        return 2;
    }
    SqliteStore store;
    store.SetPackErrorHandler([](const PackError& error) {
        ++g_failures;
        std::fprintf(stderr, "%s\n", error.detail.toUtf8().constData());
    });
    const OpenResult opened = store.Open(argv[1]);
    if (opened.state != OpenResult::Opened && opened.state != OpenResult::Created) {
        return 3;
    }
    Say("open");
    const std::string command = argv[2];
    if (command == "loop") {
        for (int next = ta::test::LoadGeneration(store).value_or(-1) + 1; next > 0; ++next) {
            Write(store, next);
        }
        return 4;
    }
    if (command == "once" && argc == 4) {
        Write(store, std::atoi(argv[3]));
    } else if (command == "race" && argc == 5) {
        const int start = std::atoi(argv[3]);
        for (int i = 0; i < std::atoi(argv[4]); ++i) {
            Write(store, start + 2 * i);
        }
    } else if (command == "raise") {
        g_failures += store.SetTASettingReloadType(true) ? 0 : 1;
    }
    return g_failures == 0 ? 0 : 1;
}
