#pragma once

#include "vipsdk/include/VipSdkExport.h"

#include <QString>

/// The product's information as the SDK knows it. Callable from any thread.
class ONDVIPSDK_EXPORT ProductInfoMgr
{
public:
    /// What telemetry tells of the product: its channel numbers, its installation, its version and language.
    struct PublicInfo
    {
        ///@{

        /// As ProductInfo has it.
        int tid1 = 0;
        int tid2 = 0;
        int tod1 = 0;
        int tod2 = 0;
        int iid = 0;
        int pid = 0;
        int tryNo = 0;
        QString uuid;
        ///@}
        QString version; ///< of the main application
        QString language; ///< in use, "en" for example
    };

    /// The process's only instance.
    static ProductInfoMgr *GetInstance();

    /// Prepares the information. May be called again, and reads it anew.
    void Initialize();

    /// The public information; zeros and empty texts before Initialize().
    [[nodiscard]] PublicInfo GetPublicInfo() const;

private:
    ProductInfoMgr() = default;
    ~ProductInfoMgr() = default;
};
