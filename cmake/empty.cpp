// Stands in for a room that holds no source yet.
