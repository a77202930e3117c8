#pragma once

namespace store {

/// The two worlds of like-patterns, by the way a statement reaches the database.
enum class Wildcards {
    Asterisk, ///< record-at-a-time work and data controls: * ? # [a-z] [!a-z]
    Percent,  ///< the connection of ConnectDatabase: % _
};

} // namespace store
