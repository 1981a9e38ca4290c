/* Starts a program and measures the time until its first top-level window is mapped
 * on the X server, then closes it and reports its peak resident memory.
 * Usage: bench_time_to_window <program> [args...]
 * Prints: "<milliseconds to map> <peak RSS in KiB>"  */
#define _GNU_SOURCE
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

static double now_ms(void)
{
    struct timespec ts;
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return ts.tv_sec * 1000.0 + ts.tv_nsec / 1e6;
}

int main(int argc, char **argv)
{
    if (argc < 2) {
        fprintf(stderr, "usage: %s program [args...]\n", argv[0]);
        return 2;
    }
    Display *display = XOpenDisplay(NULL);
    if (!display) {
        fprintf(stderr, "no X display\n");
        return 2;
    }
    Window root = DefaultRootWindow(display);
    /* The window manager reparents client windows; watch the root for new frames and
     * their children. A MapNotify on the root's substructure or a reparented child counts. */
    XSelectInput(display, root, SubstructureNotifyMask);
    XSync(display, False);

    double start = now_ms();
    pid_t child = fork();
    if (child == 0) {
        execvp(argv[1], argv + 1);
        _exit(127);
    }

    double mapped = -1;
    while (mapped < 0) {
        while (!XPending(display)) {
            int status;
            if (waitpid(child, &status, WNOHANG) == child) {
                fprintf(stderr, "program ended before it mapped a window\n");
                return 1;
            }
            if (now_ms() - start > 30000) {
                kill(child, SIGKILL);
                fprintf(stderr, "timed out\n");
                return 1;
            }
            usleep(200);
        }
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == CreateNotify)
            XSelectInput(display, event.xcreatewindow.window, SubstructureNotifyMask | StructureNotifyMask);
        if (event.type == MapNotify && !event.xmap.override_redirect) {
            /* Ignore frames the window manager draws: a client window has a WM_CLASS. */
            XClassHint hint;
            if (XGetClassHint(display, event.xmap.window, &hint)) {
                XFree(hint.res_name);
                XFree(hint.res_class);
                mapped = now_ms() - start;
            }
        }
    }
    /* Let it settle, then end it; ru_maxrss survives the signal. */
    usleep(300000);
    kill(child, SIGTERM);
    int status;
    struct rusage usage;
    wait4(child, &status, 0, &usage);
    printf("%.1f %ld\n", mapped, usage.ru_maxrss);
    XCloseDisplay(display);
    return 0;
}
