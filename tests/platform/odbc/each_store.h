#pragma once

#include "platform/store_talk.h"
#include "support/store_adapters.h"
#include "support/temp_folder.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

/// One empty catalog and an open connection to it, under each data adapter.
class EachStore : public testing::TestWithParam<testing_support::StoreAdapter>, public StoreTalk {
protected:
    EachStore() : catalog(GetParam().newCatalogName()) {
        GetParam().makeCatalog(folder.str(), catalog);
        connection = newConnection();
    }
    ~EachStore() override {
        connection.reset();
        GetParam().dropCatalog(catalog);
    }

    /// A connection to the catalog beside the first one, as another station has it.
    [[nodiscard]] std::unique_ptr<platform::DataConnection> newConnection() const {
        auto opened = GetParam().makeConnection(folder.str());
        opened->open(GetParam().settings(catalog));
        return opened;
    }

    [[nodiscard]] platform::DataConnection& talked() override { return *connection; }

    testing_support::TempFolder folder;
    std::string catalog;
    std::unique_ptr<platform::DataConnection> connection;
};
