#include "fig_losses.h"

#include "ZemFig2Figure.h"
#include "ZemFig2SnapshotFrame.h"

#include <ZemScriptObject.h>
#include <ZemTranslate.h>

namespace Zem::Fig2 {

void logLosses(Figure const &figure, ErrorLog *log)
{
    for (auto it = figure.getElementBegin(); it != figure.getElementEnd(); ++it) {
        auto const *snapshot = dynamic_cast<Snapshot const *>(*it);
        if (snapshot && snapshot->getSnapshotData())
            *log << translate("Figure_Snapshot_err", "the snapshot inside '%1' is not stored")
                        .arg(snapshot->getScriptObject()->getName())
                 << END_LOG;
    }
}

} // namespace Zem::Fig2
