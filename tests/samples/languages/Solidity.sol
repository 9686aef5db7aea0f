pragma solidity ^0.8.20;

/* A box with
   one number. */
contract Box is Owned {
    uint256 private value;
    mapping(address => bool) public allowed;

    event Changed(address indexed by, uint256 value);

    function store(uint256 next) external payable {
        require(allowed[msg.sender], "not \"allowed\"");
        if (next > 0xFF || next == 1 ether) revert('too large');
        value = next; // kept
        emit Changed(msg.sender, next);
    }
}
