// SPDX-License-Identifier: MIT
#include "host/dialogs/importthread.h"

namespace mirn::zelchip {

ImportThread::ImportThread(const zelimporter::ImportOptions& options, QObject* parent)
    : QThread(parent)
    , m_import(options)
{ }

ImportThread::~ImportThread()
{
    cancel();
    wait();
}

void ImportThread::run()
{
    m_result = m_import.run();
}

} // namespace mirn::zelchip
