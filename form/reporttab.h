#pragma once

// The pages of the report form's tab widget, by their index in it.
enum class ReportTab { Introduction = 0, Identity = 1, Details = 2, Description = 3, Attachments = 4, Settings = 5 };

constexpr int tabIndex(ReportTab tab)
{
    return static_cast<int>(tab);
}
