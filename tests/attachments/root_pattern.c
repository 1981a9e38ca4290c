/* Paints the capture test pattern on the X root window, so that every pixel of the
 * screen tells where it is: red = x & 255, green = y & 255, blue = (x >> 8) << 4 |
 * (y >> 8) (low four bits of each). The background stays after this program exits,
 * as with xsetroot. Needs a 24- or 32-bit TrueColor root. With --default, gives the root
 * its default background back instead, as `xsetroot -def` does. */
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int main(int argc, char **argv)
{
    Display *display = XOpenDisplay(NULL);
    if (!display) {
        fprintf(stderr, "root_pattern: cannot open the display\n");
        return 1;
    }
    const int screen = DefaultScreen(display);
    const Window root = RootWindow(display, screen);
    if (argc > 1 && strcmp(argv[1], "--default") == 0) {
        XSetWindowBackgroundPixmap(display, root, None); /* None: the root's default */
        XClearWindow(display, root);
        XSync(display, False);
        XCloseDisplay(display);
        return 0;
    }
    const int width = DisplayWidth(display, screen);
    const int height = DisplayHeight(display, screen);
    const int depth = DefaultDepth(display, screen);
    Visual *visual = DefaultVisual(display, screen);
    if (depth < 24 || visual->red_mask != 0xff0000 || visual->green_mask != 0xff00 || visual->blue_mask != 0xff) {
        fprintf(stderr, "root_pattern: the root is not 24-bit RGB\n");
        XCloseDisplay(display);
        return 1;
    }

    unsigned int *pixels = malloc((size_t)width * (size_t)height * sizeof *pixels);
    if (!pixels) {
        XCloseDisplay(display);
        return 1;
    }
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const unsigned int blue = (unsigned int)(((x >> 8) & 0xf) << 4 | ((y >> 8) & 0xf));
            pixels[(size_t)y * (size_t)width + (size_t)x] =
                (unsigned int)(x & 0xff) << 16 | (unsigned int)(y & 0xff) << 8 | blue;
        }
    }
    XImage *image = XCreateImage(display, visual, (unsigned int)depth, ZPixmap, 0, (char *)pixels, (unsigned int)width,
                                 (unsigned int)height, 32, 0);
    const Pixmap pixmap = XCreatePixmap(display, root, (unsigned int)width, (unsigned int)height, (unsigned int)depth);
    GC gc = XCreateGC(display, pixmap, 0, NULL);
    XPutImage(display, pixmap, gc, image, 0, 0, 0, 0, (unsigned int)width, (unsigned int)height);
    XSetWindowBackgroundPixmap(display, root, pixmap);
    XClearWindow(display, root);
    XFreeGC(display, gc);
    XFreePixmap(display, pixmap);
    XDestroyImage(image); /* frees the pixels too */
    XSync(display, False);
    XCloseDisplay(display);
    return 0;
}
