#include "commands.h"

namespace tool {

std::span<const Entry* const> all_entries()
{
    static constexpr const Entry* entries[] = {
        &info_entry,  &formats_entry, &fill_entry,   &copy_entry,   &convert_entry,   &blend_entry,
        &test_entry,  &scale_entry,   &play_entry,   &diff_entry,   &sheet_entry,     &scene_entry,
        &bench_entry, &sum_entry,     &report_entry, &manual_entry, &completion_entry};
    return entries;
}

} // namespace tool
