// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/vtclient/client/treemirror.h>
#include <platform/vtclient/ivtclient.h>

namespace vt {

/// A tic of VtClient: the two paths as they were given, and the mirror that serves them.
class VtTic final : public IVtTic {
  public:
    VtTic(QString localPath, QString remotePath, TreeMirror& mirror)
        : m_localPath(std::move(localPath)), m_remotePath(std::move(remotePath)), m_mirror(&mirror) {}

    bool IsEstablished() const override { return m_mirror != nullptr && m_mirror->IsEstablished(); }
    bool IsAbsent() const override { return m_isAbsent; }
    QString GetLocalPath() const override { return m_localPath; }
    QString GetRemotePath() const override { return m_remotePath; }

    const TreeMirror* Mirror() const { return m_mirror; }
    void SetAbsent(bool isAbsent) { m_isAbsent = isAbsent; }
    void Detach() { m_mirror = nullptr; }

  private:
    QString m_localPath;
    QString m_remotePath;
    const TreeMirror* m_mirror;
    bool m_isAbsent = false;
};

}  // namespace vt
