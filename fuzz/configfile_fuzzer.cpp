// SPDX-License-Identifier: Apache-2.0
#include <platform/config/store/inireader.h>
#include <platform/config/store/iniwriter.h>

#include <fuzz/check.h>

#include <cstddef>
#include <cstdint>

/// The bytes are a configuration file. What can be read must be written, and read to the same again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CfgContents contents;
    QString defect;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    if (!IniReader::Read(bytes, &contents, &defect)) {
        Check(!defect.isEmpty(), "what is refused has a reason");
        Check(contents.empty(), "and gives nothing");
        return 0;
    }
    for (const auto& [key, content] : contents)
        Check(!key.isEmpty() && cfgcontents::Path(key) == key, "a key is a path", key);
    const QByteArray written = IniWriter::Write(contents);
    CfgContents again;
    Check(IniReader::Read(written, &again, &defect), "what was read is written so that it can be read",
          defect);
    Check(again == contents, "as the same");
    return 0;
}
