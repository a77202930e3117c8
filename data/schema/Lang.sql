Create Table Lang (
    id text(255),
    ENG memo,
    CHS memo,
    CHT memo
);
