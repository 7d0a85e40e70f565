package com.corvane.bench;

import java.util.List;

/** Rows that share what they work on, which is made when the group is and removed with it. */
interface RowGroup extends AutoCloseable {
    List<Row> rows();

    @Override
    void close() throws Exception;
}
