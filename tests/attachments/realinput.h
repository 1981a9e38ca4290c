#pragma once

// Real pointer and key input through the window system, as a user gives it: xdotool
// on X, SetCursorPos and SendInput on Windows (under Wine these move the X pointer
// too). The steps are played in order by run(); points are global, in Qt's logical
// pixels, as the tests' widgets see them, and go to the window system in the screen's
// own pixels.
//
//     RealInput().moveTo({100, 100}).press().moveTo({300, 250}).release().run();

#include <QGuiApplication>
#include <QPoint>
#include <QScreen>
#include <QStringList>

#ifdef Q_OS_WIN
#include "support/winkeys.h"

#include <windows.h>

#include <functional>
#include <vector>
#else
#include <QProcess>
#endif

class RealInput
{
public:
    RealInput &moveTo(const QPoint &point)
    {
        const QPoint native = nativePoint(point);
#ifdef Q_OS_WIN
        m_steps.push_back([native] {
            POINT reached = {};
            return SetCursorPos(native.x(), native.y()) && GetCursorPos(&reached) && reached.x == native.x()
                   && reached.y == native.y();
        });
#else
        m_arguments << "mousemove" << QString::number(native.x()) << QString::number(native.y());
#endif
        return *this;
    }

    RealInput &press(Qt::MouseButton button = Qt::LeftButton)
    {
#ifdef Q_OS_WIN
        m_steps.push_back([button] { return sendButton(button, true); });
#else
        m_arguments << "mousedown" << xButton(button);
#endif
        return *this;
    }

    RealInput &release(Qt::MouseButton button = Qt::LeftButton)
    {
#ifdef Q_OS_WIN
        m_steps.push_back([button] { return sendButton(button, false); });
#else
        m_arguments << "mouseup" << xButton(button);
#endif
        return *this;
    }

    RealInput &click(Qt::MouseButton button = Qt::LeftButton)
    {
#ifdef Q_OS_WIN
        return press(button).release(button);
#else
        m_arguments << "click" << xButton(button);
        return *this;
#endif
    }

    // Escape is the only key the capture tests type.
    RealInput &escape()
    {
#ifdef Q_OS_WIN
        m_steps.push_back([] { return pressKeyChord({VK_ESCAPE}); });
#else
        m_arguments << "key"
                    << "Escape";
#endif
        return *this;
    }

    // Hands the steps to the window system; true when every one was taken. The events
    // reach the program's windows through its event loop, afterwards.
    bool run() const
    {
#ifdef Q_OS_WIN
        for (const auto &step : m_steps) {
            if (!step())
                return false;
        }
        return true;
#else
        return QProcess::execute(QStringLiteral("xdotool"), m_arguments) == 0;
#endif
    }

private:
    // The window system places the pointer in the screens' own pixels: Qt keeps a
    // scaled screen's top-left corner there and spreads its logical pixels by its
    // factor.
    static QPoint nativePoint(const QPoint &point)
    {
        QScreen *screen = QGuiApplication::screenAt(point);
        if (!screen)
            screen = QGuiApplication::primaryScreen();
        const QPoint origin = screen->geometry().topLeft();
        const qreal ratio = screen->devicePixelRatio();
        return origin + QPoint(qRound((point.x() - origin.x()) * ratio), qRound((point.y() - origin.y()) * ratio));
    }

#ifdef Q_OS_WIN
    static bool sendButton(Qt::MouseButton button, bool down)
    {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        switch (button) {
        case Qt::LeftButton:
            input.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
            break;
        case Qt::RightButton:
            input.mi.dwFlags = down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP;
            break;
        case Qt::MiddleButton:
            input.mi.dwFlags = down ? MOUSEEVENTF_MIDDLEDOWN : MOUSEEVENTF_MIDDLEUP;
            break;
        default:
            return false;
        }
        return SendInput(1, &input, sizeof input) == 1;
    }

    std::vector<std::function<bool()>> m_steps;
#else
    static QString xButton(Qt::MouseButton button)
    {
        switch (button) {
        case Qt::RightButton:
            return QStringLiteral("3");
        case Qt::MiddleButton:
            return QStringLiteral("2");
        default:
            return QStringLiteral("1");
        }
    }

    QStringList m_arguments;
#endif
};
