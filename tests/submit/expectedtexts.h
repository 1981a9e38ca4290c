#pragma once

#include <QByteArray>

// The details text as the server must get it, written out by hand: the fields the
// form decides, then the fixed facts of this build.
inline QByteArray expectedDetails(const QByteArray &type, const QByteArray &build, const QByteArray &area,
                                  const QByteArray &nda)
{
    return "{ \"type\" : \"" + type + "\", \"build\" : \"" + build + "\", \"area\" : \"" + area + "\", \"NDA\" : " + nda
           + ", \"phase\" : \"release\", \"buildsys_build_number\" : 3008, \"buildsys_project_name\" : \"Korvane "
             "2019.1 Release\", \"buildsys_build_agent\" : \"KV-BUILD-07\", \"buildsys_build_stage\" : \"unit\", "
             "\"buildsys_config_name\" : \"Windows 64bit\", \"buildsys_branch_name\" : \"KV2019.1\", "
             "\"buildsys_hash\" : \"3f9c2a7d1e8b4c6a9d0e5f7b2c4a6e8d1f3b5c7a\" }";
}

// The identity text of the tests' default reporter, Ann Lee, whose domain was not checked.
inline const QByteArray kAnnIdentity = "{ \"product\" : \"Korvane3D\", \"name\" : \"Ann%20Lee\", \"email\" : "
                                       "\"ann%40example.com\", \"validated\" : \"false\" }";
