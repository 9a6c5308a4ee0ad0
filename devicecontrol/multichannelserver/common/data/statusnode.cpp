// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/data/statusnode.h>

#include <platform/app/errorhandler.h>
#include <platform/values/valuedescriptor.h>

values::Node* statusnode::Provide(const QString& basePath, IObserver* observer, const wchar_t* file,
                                  int line) {
    values::Node* const node = values::ValueDescriptor::CreateNodeAbsolute(basePath, nullptr);
    AssertNotNull(node, L"m_pStaSubtree != NULL", file, line);
    if (node == nullptr) qFatal("No status node can be at the path '%s'", qUtf8Printable(basePath));
    node->AddObserver(observer);
    return node;
}
