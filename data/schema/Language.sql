Create Table Language (
    item text(255),
    userlanguage text(255),
    english text(255)
);
