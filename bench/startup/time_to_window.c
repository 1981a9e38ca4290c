/* Starts a program and measures the time until its first top-level window is mapped
 * on the X server and until the program first draws into it, then closes it and
 * reports its peak resident memory.
 * Usage: bench_time_to_window <program> [args...]
 * Prints: "<milliseconds to map> <peak RSS in KiB> <milliseconds to first paint>"
 *
 * The first paint is the first drawing into the mapped window that the X server sees
 * (a DAMAGE event): for a Qt program on X11 the first flush of its backing store, for a
 * Windows program under Wine the first copy of its window surface to the X window.
 * It is -1 when the server has no DAMAGE extension. Times run from just before fork. */
#define _GNU_SOURCE
#include <X11/Xlib.h>
#include <X11/Xlibint.h>
#include <X11/Xutil.h>
#include <X11/extensions/damageproto.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

static double nowMs(void)
{
    struct timespec ts;
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return ts.tv_sec * 1000.0 + ts.tv_nsec / 1e6;
}

/* Windows come and go while we look at them (a destroyed window's BadWindow or
 * BadDrawable); none of that matters here. */
static int ignoreXError(Display *display, XErrorEvent *error)
{
    (void)display;
    (void)error;
    return 0;
}

/* DAMAGE spoken directly (the library's development files are not needed): the
 * version handshake, one request to watch a window, and the event turned into an
 * XAnyEvent whose window is the damaged drawable. */
static int damageOpcode = -1;
static int damageEvent = -1;

static Bool damageWireToEvent(Display *display, XEvent *event, xEvent *wire)
{
    const xDamageNotifyEvent *notify = (const xDamageNotifyEvent *)wire;
    event->xany.type = notify->type & 0x7f;
    event->xany.serial = _XSetLastRequestRead(display, (xGenericReply *)wire);
    event->xany.send_event = (notify->type & 0x80) != 0;
    event->xany.display = display;
    event->xany.window = notify->drawable;
    return True;
}

/* Xlib's request macros name the display "dpy". */
static int damageInit(Display *dpy)
{
    int firstEvent, firstError;
    if (!XQueryExtension(dpy, DAMAGE_NAME, &damageOpcode, &firstEvent, &firstError))
        return 0;
    damageEvent = firstEvent + XDamageNotify;
    XESetWireToEvent(dpy, damageEvent, damageWireToEvent);
    xDamageQueryVersionReq *req;
    xDamageQueryVersionReply reply;
    LockDisplay(dpy);
    GetReq(DamageQueryVersion, req);
    req->reqType = damageOpcode;
    req->damageReqType = X_DamageQueryVersion;
    req->majorVersion = 1;
    req->minorVersion = 1;
    const int ok = _XReply(dpy, (xReply *)&reply, 0, xTrue);
    UnlockDisplay(dpy);
    SyncHandle();
    return ok;
}

/* Watches a window created but not yet mapped: the server reports the window's whole
 * visible area as damaged when the object is made, which for an unmapped window is
 * nothing, so the first event is the first drawing after the map. */
static void damageWatch(Display *dpy, Window window)
{
    if (damageOpcode < 0)
        return;
    xDamageCreateReq *req;
    LockDisplay(dpy);
    GetReq(DamageCreate, req);
    req->reqType = damageOpcode;
    req->damageReqType = X_DamageCreate;
    req->damage = XAllocID(dpy);
    req->drawable = window;
    req->level = XDamageReportNonEmpty;
    UnlockDisplay(dpy);
    SyncHandle();
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
    XSetErrorHandler(ignoreXError);
    const int haveDamage = damageInit(display);
    Window root = DefaultRootWindow(display);
    /* The window manager reparents client windows; watch the root for new frames and
     * their children. A MapNotify on the root's substructure or a reparented child counts. */
    XSelectInput(display, root, SubstructureNotifyMask);
    XSync(display, False);

    double start = nowMs();
    pid_t child = fork();
    if (child == 0) {
        execvp(argv[1], argv + 1);
        _exit(127);
    }

    double mapped = -1;
    double painted = -1;
    Window client = None;
    while (mapped < 0 || (haveDamage && painted < 0)) {
        while (!XPending(display)) {
            int status;
            if (waitpid(child, &status, WNOHANG) == child) {
                fprintf(stderr, "program ended before it %s\n", mapped < 0 ? "mapped a window" : "drew into it");
                return 1;
            }
            if (nowMs() - start > 30000) {
                kill(child, SIGKILL);
                fprintf(stderr, "timed out\n");
                return 1;
            }
            usleep(200);
        }
        XEvent event;
        XNextEvent(display, &event);
        const double at = nowMs() - start;
        if (event.type == CreateNotify) {
            XSelectInput(display, event.xcreatewindow.window, SubstructureNotifyMask | StructureNotifyMask);
            damageWatch(display, event.xcreatewindow.window);
        }
        if (mapped < 0 && event.type == MapNotify && !event.xmap.override_redirect) {
            /* Ignore frames the window manager draws: a client window has a WM_CLASS. */
            XClassHint hint;
            if (XGetClassHint(display, event.xmap.window, &hint)) {
                XFree(hint.res_name);
                XFree(hint.res_class);
                mapped = at;
                client = event.xmap.window;
            }
        }
        if (haveDamage && event.type == damageEvent && client != None && event.xany.window == client)
            painted = at;
    }
    /* Let it settle, then end it; ru_maxrss survives the signal. */
    usleep(300000);
    kill(child, SIGTERM);
    int status;
    struct rusage usage;
    wait4(child, &status, 0, &usage);
    printf("%.1f %ld %.1f\n", mapped, usage.ru_maxrss, painted);
    XCloseDisplay(display);
    return 0;
}
