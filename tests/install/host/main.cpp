#include <OrvAnnotation/AnnotationController.h>
#include <OrvAnnotation/DesktopPlatform.h>
#include <OrvAnnotation/Version.h>

#include <cstdio>
#include <cstring>

static orv::DesktopPlatform *platform;
static orv::AnnotationController *controller;

static void show(bool open)
{
    orv::stCommand_mgs record{17, 1, 0, 0, {}};
    record.ext[0] = open ? 1 : 0;
    controller->CommandClient2App(record);
}

static int printRecord(const void *bytes, std::size_t length, std::uint32_t)
{
    orv::stCommand_mgs record;
    if (length != sizeof record) {
        return 1;
    }
    std::memcpy(&record, bytes, sizeof record);
    std::printf("sent %x %x show %d\n", record.wparam, record.lparam, record.ext[0]);
    if (record.wparam == 0x8000 && record.ext[0] == 1) {
        platform->post([] { show(false); });
    } else if (record.wparam == 0x8000) {
        platform->quit(0);
    }
    return 0;
}

int main()
{
    std::printf("version %.1f\n", OrvAnnotationVersionNumber);
    orv::DesktopPlatform desktop({});
    orv::AnnotationController host;
    platform = &desktop;
    controller = &host;
    host.SetClientCommandCHSender(printRecord);
    host.SetActiveOpt(0, 17);
    desktop.post([] { show(true); });
    desktop.after(60.0, [] { platform->quit(1); });
    return desktop.run();
}
