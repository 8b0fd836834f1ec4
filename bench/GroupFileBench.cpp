// Group files beside GLib's key files, which read and write the same layout.

#include "bench/SideBySide.h"
#include "groupfile/TAGroupImport.h"
#include "platform/ProfileFile.h"
#include "platform/SyncInfo.h"
#include "platform/ui/FileAccess.h"
#include "settings/TaSettingHandle.h"
#include "tests/support/MemoryChart.h"
#include "tests/support/MemoryConfigStore.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <glib.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kGroups = 50;

struct Value {
    CString key;
    CString text;
};
using Section = std::pair<CString, std::vector<Value>>;

/// The strings of a group's 40 studies, as long as a group of about 20 KiB has them.
CString Strings(int group, const char* what) {
    CString joined;
    for (int study = 0; study < 40; ++study) {
        joined += fmt::format("{}{}={}", study == 0 ? "" : "$", study, what);
        for (int value = 0; value < 40; ++value) {
            joined += fmt::format(",{}", 100000 + group * study + value);
        }
    }
    return joined.substr(0, 10000);
}

/// The keys and values of a group file of 50 full groups, about 1 MiB.
std::vector<Section> MakeSections() {
    std::vector<Section> sections;
    CString names;
    for (int group = 0; group < kGroups; ++group) {
        const CString name = fmt::format("Group {}", group);
        names += (group == 0 ? "" : ",") + name;
        std::vector<Value> values;
        for (int pane = 1; pane <= kPaneCount; ++pane) {
            values.push_back({fmt::format("StudyType{:02d}", pane), "1$2$3$4$5$6$7$8"});
        }
        values.push_back({"ParamSetting", Strings(group, "p")});
        values.push_back({"ShapeSetting", Strings(group, "s")});
        values.push_back({"StudyShowCount", "10"});
        values.push_back({"TechWndShowKey", "4"});
        sections.emplace_back(name, std::move(values));
    }
    sections.emplace(sections.begin(), "Common",
                     std::vector<Value>{{"FileVersion", "TAS Ver3.0"}, {"GroupList", names}});
    return sections;
}

std::string WriteOurs(const std::vector<Section>& sections) {
    ta::ProfileWriter file;
    for (const auto& [section, values] : sections) {
        for (const Value& value : values) {
            file.SetString(section, value.key, value.text);
        }
    }
    return file.Bytes();
}

// Parsing the file and fetching every value from it.
void ReadFiftyGroups(benchmark::State& state) {
    const std::vector<Section> sections = MakeSections();
    const std::string bytes = WriteOurs(sections);
    std::size_t ours = 0;
    std::size_t peer = 0;
    ta::bench::RunSideBySide(
        state,
        [&] {
            ours = 0;
            const ta::ProfileReader file(bytes);
            for (const auto& [section, values] : sections) {
                for (const Value& value : values) {
                    ours += file.GetString(section, value.key).size();
                }
            }
        },
        [&] {
            peer = 0;
            GKeyFile* file = g_key_file_new();
            g_key_file_load_from_data(file, bytes.data(), bytes.size(), G_KEY_FILE_NONE, nullptr);
            for (const auto& [section, values] : sections) {
                for (const Value& value : values) {
                    gchar* text =
                        g_key_file_get_string(file, section.c_str(), value.key.c_str(), nullptr);
                    peer += text == nullptr ? 0 : std::string_view(text).size();
                    g_free(text);
                }
            }
            g_key_file_free(file);
        });
    if (ours != peer || ours < 1'000'000) {
        state.SkipWithError("not every value was read");
    }
}
BENCHMARK(ReadFiftyGroups)->Unit(benchmark::kMicrosecond);

// Building the file from its values and putting it on the disk in place of the one before.
void WriteFiftyGroups(benchmark::State& state) {
    const std::vector<Section> sections = MakeSections();
    const QTemporaryDir folder;
    const QString oursPath = folder.filePath("ours.TASG");
    const std::string peerPath = folder.filePath("peer.TASG").toStdString();
    bool good = true;
    ta::bench::RunSideBySide(
        state,
        [&] { good = ta::ui::WriteWholeFile(oursPath, WriteOurs(sections)).isEmpty() && good; },
        [&] {
            GKeyFile* file = g_key_file_new();
            for (const auto& [section, values] : sections) {
                for (const Value& value : values) {
                    g_key_file_set_string(file, section.c_str(), value.key.c_str(),
                                          value.text.c_str());
                }
            }
            good = g_key_file_save_to_file(file, peerPath.c_str(), nullptr) != FALSE && good;
            g_key_file_free(file);
        });
    if (!good) {
        state.SkipWithError("a file was not written");
    }
}
BENCHMARK(WriteFiftyGroups)->Iterations(60)->Unit(benchmark::kMicrosecond);

/// Writes the bytes beside the file, waits until they are on the disk, and renames.
bool WriteBare(const std::string& path, const std::string& bytes) {
    const std::string temporary = path + ".new";
    const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const bool written =
        write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()) &&
        fsync(file) == 0;
    return close(file) == 0 && written && std::rename(temporary.c_str(), path.c_str()) == 0;
}

// The same bytes, with the same durability, by the operating system's calls alone.
void WriteBytes(benchmark::State& state) {
    const std::string bytes = WriteOurs(MakeSections());
    const QTemporaryDir folder;
    const QString oursPath = folder.filePath("ours.TASG");
    const std::string peerPath = folder.filePath("peer.TASG").toStdString();
    bool good = true;
    ta::bench::RunSideBySide(
        state, [&] { good = ta::ui::WriteWholeFile(oursPath, bytes).isEmpty() && good; },
        [&] { good = WriteBare(peerPath, bytes) && good; });
    if (!good) {
        state.SkipWithError("a file was not written");
    }
}
BENCHMARK(WriteBytes)->Iterations(60)->Unit(benchmark::kMicrosecond);

/// The process-wide repository with one group, on a store in memory.
void LoadOneGroup(ta::test::MemoryConfigStore& memory) {
    memory = {};
    memory.maxCount = kGroups;
    memory.names = std::vector<CString>{"Group 0"};
    memory.reloadFlag = true;
    CTaSettingHandle::GetInstance().ReloadTASetting();
}

// What a user waits for: the dialog opens on the file and OK is pressed, with 49 groups to
// add and one to replace.
void ImportFiftyGroups(benchmark::State& state) {
    // Never destroyed: the repository uses them until the process ends.
    static auto& memory = *new ta::test::MemoryConfigStore;
    static auto& chartModule = *new ta::test::MemoryChartModule;
    ta::Services services;
    services.configStore = &memory;
    services.chartModule = &chartModule;
    CSyncInfo::GetSettingCFG().SetServices(services);
    const QTemporaryDir folder;
    const QString path = folder.filePath("groups.TASG");
    ta::ui::WriteWholeFile(path, WriteOurs(MakeSections()));
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        LoadOneGroup(memory);
        state.ResumeTiming();
        CTAGroupImport dialog(path);
        dialog.Create();
        dialog.accept();
    }
    if (!memory.names || memory.names->size() != kGroups) {
        state.SkipWithError("not every group was imported");
    }
}
BENCHMARK(ImportFiftyGroups)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
